#include "minibar/StyleSheets.h"

#include <QLatin1String>

namespace {

// A colour of one role in both themes, spelt as it goes into the style sheet.
struct ThemedColour
{
    const char* light;
    const char* dark;

    [[nodiscard]] QString in(bool lightTheme) const { return QLatin1String(lightTheme ? light : dark); }
};

// The bar window's colours; the position is the place-holder's number less one.
constexpr ThemedColour windowPalette[] = {
    {"#e2ddd7", "#1f2329"},              // window and page background, gaps between buttons
    {"#bab4af", "#4a5563"},              // window border
    {"#dad1ca", "#252e35"},              // button
    {"#e0d5ce", "#364152"},              // button, hovered
    {"rgba(99,172,246,100)", "#445169"}, // button, pressed
    {"#63ACF6", "#00CE01"},              // info button, checked
    {"#3c2a22", "#ffffff"},              // main text
    {"#3c2a22", "#aec4d0"},              // info line
    {"#3c2a22", "#054604"},              // info line of a checked button
    {"#cfc7c0", "#20252b"},              // info button, disabled
};

constexpr ThemedColour modPalette[] = {
    {"#dad1ca", "#171a1f"},              // button
    {"#63ACF6", "#2f536c"},              // button, checked or pressed
    {"rgba(99,172,246,100)", "#00ce01"}, // switch's "on" half, checked
    {"#c4bdb3", "#30373f"},              // switch's "off" half, checked
    {"#3c2a22", "#ffffff"},              // command button text
};

constexpr QLatin1String windowTemplate(R"(
QWidget#miniBarWindow {
    background-color: %1;
    border: 1px solid %2;
    border-radius: 0px;
}
QWidget#miniBarCollapsedPage, QWidget#miniBarExpandedPage {
    background-color: %1;
}
LabelButton#miniBarInfoButton {
    background-color: %3;
    border: none;
    border-top: 2px solid %1;
    border-bottom: 2px solid %1;
    border-radius: 0px;
    padding: 0px;
    margin: 0px;
}
LabelButton#miniBarInfoButton:hover {
    background-color: %4;
}
LabelButton#miniBarInfoButton:pressed {
    background-color: %5;
}
LabelButton#miniBarInfoButton:checked {
    background-color: %6;
}
LabelButton#miniBarInfoButton QLabel#textLabel {
    color: %7;
    background: transparent;
    font-size: 15px;
    font-weight: 600;
}
LabelButton#miniBarInfoButton QLabel#infoLabel {
    color: %8;
    background: transparent;
    font-size: 14px;
    font-weight: 600;
}
LabelButton#miniBarInfoButton QLabel#infoLabel[parentChecked="false"] {
    color: %8;
}
LabelButton#miniBarInfoButton:checked QLabel#textLabel {
    color: %7;
}
LabelButton#miniBarInfoButton:checked QLabel#infoLabel[parentChecked="true"] {
    color: %9;
}
QPushButton#miniBarToggleButton {
    color: %7;
    background-color: %3;
    border: none;
    border-top: 2px solid %1;
    border-bottom: 2px solid %1;
    border-radius: 0px;
    font-family: "Segoe UI Symbol";
    font-size: 12px;
    font-weight: 700;
    padding: 0px;
    padding-left: 0px;
    padding-right: 0px;
    padding-top: 0px;
    padding-bottom: 0px;
    margin: 0px;
    min-height: 28px;
    max-height: 28px;
}
QPushButton#miniBarToggleButton:hover {
    background-color: %4;
}
QPushButton#miniBarToggleButton:pressed {
    background-color: %5;
}
QPushButton#miniBarCommandButton {
    color: %7;
    background-color: %3;
    border: none;
    border-top: 2px solid %1;
    border-bottom: 2px solid %1;
    border-radius: 0px;
    font-size: 15px;
    font-weight: 600;
    padding: 0px;
    margin: 0px;
    min-height: 60px;
    max-height: 60px;
}
QPushButton#miniBarCommandButton:hover {
    background-color: %4;
}
QPushButton#miniBarCommandButton:pressed {
    background-color: %5;
}
)");

constexpr QLatin1String disabledTemplate(R"(
LabelButton#miniBarInfoButton:disabled {
    background-color: %1;
}
LabelButton#miniBarInfoButton:disabled QLabel#textLabel {
    color: %2;
}
LabelButton#miniBarInfoButton:disabled QLabel#infoLabel {
    color: %3;
}
LabelButton#miniBarInfoButton:disabled:checked QLabel#infoLabel[parentChecked="true"] {
    color: %4;
}
)");

// A popup and its title; @ stands for the popup's object name.
constexpr ThemedColour popupTemplate = {
    "QDialog#@ { background-color: #ffffff; border: 1px solid #bab4af; border-radius: 0px;}"
    "QDialog#@ QLabel#titleLabel { font-weight: bold; font-size: 16pt; color: #3c2a22; background-color: "
    "#faf6f3; "
    "padding-left: 5px; min-height: 33px; max-height: 33px; margin-left: 8px; margin-top: 5px; margin-right: "
    "8px; "
    "margin-bottom: 5px;}",
    "QDialog#@ { background-color: #000000; border: 1px solid #3E4349; border-radius: 0px;}"
    "QDialog#@ QLabel#titleLabel { font-weight: bold; font-size: 16pt; color: #ffffff; background-color: "
    "#0001cf; "
    "padding-left: 5px; min-height: 33px; max-height: 33px; margin-left: 8px; margin-top: 5px; margin-right: "
    "8px; "
    "margin-bottom: 5px;}",
};

constexpr QLatin1String modTemplate(
    "QDialog#miniBarHelperModPopup InfoButton, QDialog#miniBarHelperModPopup LabelButton "
    "{ background-color: %1; border: none; outline: 0px;}"
    "QDialog#miniBarHelperModPopup InfoButton:checked, QDialog#miniBarHelperModPopup LabelButton:checked "
    "{ background-color: %2;}"
    "QDialog#miniBarHelperModPopup InfoButton > QLabel, QDialog#miniBarHelperModPopup LabelButton > QLabel, "
    "QDialog#miniBarHelperModPopup SwitchButton > QLabel { background-color: transparent;}"
    "QDialog#miniBarHelperModPopup SwitchButton QWidget { background-color: transparent; border: none;}"
    "QDialog#miniBarHelperModPopup SwitchButton QPushButton#btnOn:checked { background-color: %3;}"
    "QDialog#miniBarHelperModPopup SwitchButton QPushButton#btnOff:checked { background-color: %4;}"
    "QDialog#miniBarHelperModPopup QPushButton#remoteModCommandButton "
    "{ color: %5; background-color: %1; border: none; font-size: 14px; font-weight: 600;}"
    "QDialog#miniBarHelperModPopup QPushButton#remoteModCommandButton:pressed { background-color: %2;}");

QString popupRules(bool light, QLatin1String popupName)
{
    return popupTemplate.in(light).replace(QLatin1Char('@'), popupName);
}

} // namespace

QString miniBarStyleSheet(bool light)
{
    const auto colour = [light](int number) { return windowPalette[number - 1].in(light); };
    const QString window = QString(windowTemplate)
                               .arg(colour(1), colour(2), colour(3), colour(4), colour(5), colour(6),
                                    colour(7), colour(8), colour(9));
    return window + QString(disabledTemplate).arg(colour(10), colour(7), colour(8), colour(9));
}

QString sweepPopupStyleSheet(bool light)
{
    return popupRules(light, QLatin1String("miniBarHelperSweepPopup"));
}

QString modPopupStyleSheet(bool light)
{
    const auto colour = [light](int number) { return modPalette[number - 1].in(light); };
    return popupRules(light, QLatin1String("miniBarHelperModPopup")) +
           QString(modTemplate).arg(colour(1), colour(2), colour(3), colour(4), colour(5));
}
