#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>
#include <functional>

// Does something with the next chooser, once it has the keyboard.
class ChooserVisitor final : public QTimer
{
public:
    explicit ChooserVisitor(std::function<void(QFileDialog*)> act)
    {
        setInterval(5);
        connect(this, &QTimer::timeout, this, [this, act = std::move(act)] {
            auto* const chooser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (chooser && chooser->isActiveWindow()) {
                stop();
                met = true;
                act(chooser);
            }
        });
        start();
    }
    bool met = false;
};

inline QLineEdit* nameField(const QFileDialog* chooser)
{
    return chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}
