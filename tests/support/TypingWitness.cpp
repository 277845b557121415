// A program that a user might be typing into while the mini bar comes and goes: one text field that reports
// on its output, a line each, when its window gains or loses the keyboard and what the field holds.

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QTextStream>

namespace {

class Witness final : public QLineEdit
{
public:
    Witness()
    {
        setWindowTitle(QStringLiteral("Typing witness"));
        setGeometry(60, 560, 420, 60);
        connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { report("text", text); });
    }

protected:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::ActivationChange)
            report(isActiveWindow() ? "active" : "inactive");
        QLineEdit::changeEvent(event);
    }

private:
    void report(const char* what, const QString& detail = QString())
    {
        m_out << what;
        if (!detail.isEmpty())
            m_out << ' ' << detail;
        m_out << '\n';
        m_out.flush();
    }

    QTextStream m_out{stdout};
};

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    Witness witness;
    witness.show();
    return QApplication::exec();
}
