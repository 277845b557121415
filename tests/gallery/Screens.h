#pragma once

#include <QString>
#include <functional>
#include <memory>

class EnumTextButton;
class QAbstractButton;
class QDialog;
class QJsonObject;
class QMenu;
class QPoint;
class QWidget;
class RemoteMiniBarWindow;

// Shows every screen of the product, one after the other, from the real bar: what the user sees after real
// clicks, with the theme, the language and the fonts that are in force.
class Screens final
{
public:
    // A screen is shown: its name, unlike all others, and what there is to look at, a window or the dialog
    // within an overlay. Nothing may be clicked.
    using Visitor = std::function<void(const QString& name, QWidget* shown)>;

    explicit Screens(Visitor visitor);
    ~Screens();

    // All of them.
    void visit();
    // What opens from a bar that stands in each corner of the screen.
    void visitCorners();

private:
    void visitBar();
    void visitSweep();
    void visitMenu();
    void visitEditors();
    void visitDropDowns(const QString& editor);
    void visitQuickKeyboards();
    void visitFieldKeyboards();
    void visitChooser();
    void visitMessage();
    void visitCorner(const QString& name, const QPoint& topRight);

    void show(const QString& name, QWidget* shown) const;
    // Opens the keyboard by a click on the button, and types what will be refused.
    void visitKeyboard(const QString& name, QAbstractButton* button, const char* refusedKeys) const;
    void visitDropDown(const QString& name, EnumTextButton* button) const;
    // Whatever modal dialog `open` runs, while it runs.
    void visitModal(const QString& name, const std::function<bool(const QWidget*)>& isReady,
                    const std::function<void()>& open) const;

    void apply(const QJsonObject& snapshot) const;
    void expand(bool expanded) const;
    void openItem(const QString& screen) const;
    void closePopups() const;
    [[nodiscard]] QMenu* menu() const;
    [[nodiscard]] QDialog* popup(const char* name) const;
    template <typename Widget>
    [[nodiscard]] Widget* inPopup(const char* popupName, const char* name) const;
    // The bar's visible info button of this place from the top.
    [[nodiscard]] QAbstractButton* barButton(int place) const;

    Visitor m_visitor;
    std::unique_ptr<RemoteMiniBarWindow> m_bar;
};
