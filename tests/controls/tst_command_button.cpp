#include "controls/CommandButton.h"

#include <QHelpEvent>
#include <QImage>
#include <QTest>
#include <QToolTip>
#include <memory>

namespace {

const QString longText = QStringLiteral("A text that is much too long for its button");

// What pointing at the button tells; empty for nothing.
QString told(CommandButton* button)
{
    QToolTip::hideText();
    const QPoint place = button->rect().center();
    QHelpEvent event(QEvent::ToolTip, place, button->mapToGlobal(place));
    QCoreApplication::sendEvent(button, &event);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

} // namespace

// A push button among value buttons.
class CommandButtonTest final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isAsHighAsAValueButton();
    void longTextIsShortened();
    void whatFitsNeedsNoToolTip();
    void ownToolTipIsKept();

private:
    std::unique_ptr<CommandButton> m_button;
};

void CommandButtonTest::init()
{
    m_button = std::make_unique<CommandButton>();
    m_button->setWindowFlag(Qt::FramelessWindowHint);
    m_button->setText(longText);
    m_button->resize(146, 60);
    m_button->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_button.get()));
}

void CommandButtonTest::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    m_button.reset();
}

void CommandButtonTest::isAsHighAsAValueButton()
{
    QCOMPARE(m_button->sizeHint().height(), 60);
    QVERIFY(m_button->minimumSizeHint().width() <= 44); // it is shortened before it drives its column
    QVERIFY(m_button->sizeHint().width() > 146);
}

void CommandButtonTest::longTextIsShortened()
{
    const QImage shortened = m_button->grab().toImage();
    QCOMPARE(m_button->text(), longText);
    QCOMPARE(told(m_button.get()), longText);
    QFont smallest = m_button->font();
    smallest.setPixelSize(12);
    m_button->setText(QFontMetrics(smallest).elidedText(longText, Qt::ElideRight, 146 - 2 * 10));
    QCOMPARE(m_button->grab().toImage(), shortened);
}

void CommandButtonTest::whatFitsNeedsNoToolTip()
{
    m_button->setText(QStringLiteral("Load"));
    QCOMPARE(told(m_button.get()), QString());
}

void CommandButtonTest::ownToolTipIsKept()
{
    m_button->setToolTip(QStringLiteral("Own"));
    QCOMPARE(told(m_button.get()), QString(longText + QStringLiteral("\nOwn")));
    QCOMPARE(m_button->toolTip(), QStringLiteral("Own"));
    m_button->setText(QStringLiteral("Load"));
    QCOMPARE(told(m_button.get()), QStringLiteral("Own"));
}

QTEST_MAIN(CommandButtonTest)

#include "tst_command_button.moc"
