#include "simulator/LightLook.h"

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>

namespace Simulator {

namespace {

struct Role
{
    QLatin1String name; // in the style sheet between braces
    QRgb color;
};

const Role roles[] = {
    {QLatin1String("surface"), 0xffe2ddd7},   {QLatin1String("raised"), 0xfffaf6f3},
    {QLatin1String("sunken"), 0xffdad1ca},    {QLatin1String("pressed"), 0xffcdc2ba},
    {QLatin1String("border"), 0xffbab4af},    {QLatin1String("text"), 0xff3c2a22},
    {QLatin1String("secondary"), 0xff6d5f58}, // the text colour at 75 % on the raised surface
    {QLatin1String("disabled"), 0xff7a7169},  {QLatin1String("accent"), 0xff63acf6},
};

QColor color(const char* name)
{
    for (const Role& role : roles) {
        if (role.name == QLatin1String(name))
            return QColor::fromRgb(role.color);
    }
    Q_UNREACHABLE();
}

const char* const sheet = R"(
QWidget { color: {text}; font-family: "Roboto"; font-size: 14px; }
QWidget#simulatorWindow { background: {surface}; }
QLabel#title { font-size: 16px; font-weight: 500; }
QLabel[role="secondary"] { color: {secondary}; font-size: 13px; }
QLabel:disabled { color: {disabled}; }
QFrame[role="panel"] { background: {raised}; border: 1px solid {border}; border-radius: 4px; }
QFrame[role="line"] { background: {border}; border: none; }

QAbstractSpinBox {
    background: {sunken}; border: 1px solid {border}; border-radius: 3px; padding: 0 10px;
    min-height: 42px; font-size: 16px; font-weight: 500;
    selection-background-color: {accent}; selection-color: {text};
}
QAbstractSpinBox:focus { border-color: {accent}; }
QAbstractSpinBox:disabled { color: {disabled}; background: {raised}; }

QPushButton {
    background: {sunken}; border: 1px solid {border}; border-radius: 3px; padding: 0 16px; min-height: 42px;
}
QPushButton:pressed { background: {pressed}; }
QPushButton:focus { border-color: {accent}; }
QPushButton:disabled { color: {disabled}; background: {raised}; }
QPushButton[half="off"] { border-top-right-radius: 0; border-bottom-right-radius: 0; }
QPushButton[half="on"] { border-top-left-radius: 0; border-bottom-left-radius: 0; border-left: none; }
QPushButton[half]:!checked { background: {raised}; color: {secondary}; }
QPushButton[half="off"]:checked { background: {sunken}; font-weight: 500; }
QPushButton[half="on"]:checked { background: {accent}; font-weight: 500; }
QPushButton[half]:disabled { background: {raised}; color: {disabled}; }
)";

} // namespace

QPalette lightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, color("surface"));
    palette.setColor(QPalette::WindowText, color("text"));
    palette.setColor(QPalette::Base, color("sunken"));
    palette.setColor(QPalette::Text, color("text"));
    palette.setColor(QPalette::Button, color("sunken"));
    palette.setColor(QPalette::ButtonText, color("text"));
    palette.setColor(QPalette::Highlight, color("accent"));
    palette.setColor(QPalette::HighlightedText, color("text"));
    palette.setColor(QPalette::ToolTipBase, color("raised"));
    palette.setColor(QPalette::ToolTipText, color("text"));
    return palette;
}

QString lightStyleSheet()
{
    QString text = QString::fromLatin1(sheet);
    for (const Role& role : roles)
        text.replace(QLatin1Char('{') + role.name + QLatin1Char('}'), QColor::fromRgb(role.color).name());
    return text;
}

void loadFontsBesideProgram()
{
    const QDir folder(QCoreApplication::applicationDirPath() + QLatin1String("/../fonts"));
    const auto fonts = folder.entryInfoList({QStringLiteral("*.ttf")}, QDir::Files);
    for (const QFileInfo& font : fonts)
        QFontDatabase::addApplicationFont(font.canonicalFilePath());
}

} // namespace Simulator
