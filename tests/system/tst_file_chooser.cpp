// The choice of a file from the modulation popup, on a real screen. The window manager comes in
// TARVINEL_WINDOW_MANAGER.

#include "support/Waiting.h"
#include "system/BarSession.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace TestSupport;

namespace {

QJsonObject item(const char* id, const char* kind, const QJsonObject& state)
{
    return {{QStringLiteral("id"), QLatin1String(id)},
            {QStringLiteral("name"), QLatin1String(kind)},
            {QStringLiteral("text"), QLatin1String(kind)},
            {QStringLiteral("editorKind"), QLatin1String(kind)},
            {QStringLiteral("revision"), 3},
            {QStringLiteral("editorState"), state}};
}

QJsonObject snapshot(int seq, const QJsonArray& items)
{
    QJsonObject object = txSnapshot(seq, false, 1e9, -20);
    object.insert(QStringLiteral("mod"), QJsonObject{{QStringLiteral("enabled"), false},
                                                     {QStringLiteral("enabledBusinessId"), QString()},
                                                     {QStringLiteral("businesses"), items}});
    return object;
}

const QString caption = QStringLiteral("Select WAV/ARB file");

} // namespace

class TestFileChooser final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typedPathBecomesOneRequest();
    void barAndPopupStay();
    void hidingClosesTheChooser();
    void droppedItemClosesTheChooser();
    void otherEditorClosesTheChooser();
    void shutdownEndsTheProgram();
    void lostLinkEndsTheProgram();

private:
    // The chooser is open, from the popup of an item that plays a file.
    [[nodiscard]] bool openChooser(BarSession& session) const;
    [[nodiscard]] std::optional<WindowFacts> chooser(BarSession& session) const;
    [[nodiscard]] QString shownFile(BarSession& session) const;

    PrivateDisplay m_display{qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"))};
    Accessibility m_accessibility{m_display};
    QTemporaryDir m_folder;
    QString m_wav;
};

void TestFileChooser::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
    m_wav = m_folder.filePath(QStringLiteral("tone.wav"));
    QFile file(m_wav);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

std::optional<WindowFacts> TestFileChooser::chooser(BarSession& session) const
{
    const auto windows = session.desktop().mappedWindows(session.helper().processId());
    for (const WindowFacts& window : windows) {
        if (window.title == caption)
            return window;
    }
    return std::nullopt;
}

QString TestFileChooser::shownFile(BarSession& session) const
{
    const auto node = m_accessibility.waitForNode(session.helper().processId(), QStringLiteral("push button"),
                                                  QStringLiteral("File Name"));
    return node ? node->description : QString();
}

bool TestFileChooser::openChooser(BarSession& session) const
{
    const qint64 helper = session.helper().processId();
    session.main().sendSnapshot(snapshot(1, {item("b1", "playback", {})}));
    if (!session.expand() || !waitUntil([&] { return session.main().show(); }) ||
        !session.click(session.centre(BarSession::Mod)) ||
        session.desktop().waitForWindows(helper, 2).isEmpty())
        return false;
    if (!session.desktop().key(QStringLiteral("Down")) || !session.desktop().key(QStringLiteral("Return")))
        return false;
    const auto load =
        m_accessibility.waitForNode(helper, QStringLiteral("push button"), QStringLiteral("Load"));
    // The popup's surround covers the screen, so what is from its corner is from the screen's.
    if (!load || !session.click(load->extents.center()))
        return false;
    return waitUntil([&] {
        const auto window = chooser(session);
        return window && session.desktop().x().activeWindow() == window->id;
    });
}

void TestFileChooser::typedPathBecomesOneRequest()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    QVERIFY(QRect(QPoint(), session.desktop().x().screenSize()).contains(chooser(session)->geometry));
    QVERIFY(session.desktop().type(m_wav));
    if (qEnvironmentVariableIsSet("TARVINEL_PICTURES"))
        QVERIFY(session.desktop().saveScreen(qEnvironmentVariable("TARVINEL_PICTURES")));
    QVERIFY(session.desktop().key(QStringLiteral("Return")));
    QVERIFY(session.main().waitForRequests(1));
    const QJsonObject request = session.main().requests().first();
    const QJsonObject args = request.value(QLatin1String("args")).toObject();
    QCOMPARE(request.value(QLatin1String("cmd")).toString(), QStringLiteral("SOUR:MOD:CONF"));
    QVERIFY(QJsonDocument(args).toJson().contains(m_wav.toUtf8()));
    QTRY_VERIFY(!chooser(session));
    QVERIFY(session.isExpanded());
    QCOMPARE(shownFile(session), QStringLiteral("N/A")); // until it is confirmed
    session.main().sendSnapshot(snapshot(2, {item("b1", "playback", {{QStringLiteral("FileName"), m_wav}})}));
    QTRY_COMPARE(shownFile(session), m_wav);
    QVERIFY(session.main().show());
    QCOMPARE(session.main().count("REQ"), 1);
}

void TestFileChooser::barAndPopupStay()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    const auto others = session.desktop().mappedWindows(session.helper().processId()).size();
    QCOMPARE(others, 3);                                       // bar, popup, chooser
    QVERIFY(session.click(session.centre(BarSession::Sweep))); // which waits while something is to be chosen
    session.main().sendSnapshot(snapshot(2, {item("b1", "playback", {{QStringLiteral("SampleRate"), 5e6}})}));
    QVERIFY(session.main().show());
    QCOMPARE(session.desktop().mappedWindows(session.helper().processId()).size(), others);
    QVERIFY(session.isExpanded());
    QCOMPARE(session.desktop().mappedWindows(session.helper().processId()).last().title, caption); // on top
    QVERIFY(session.desktop().key(QStringLiteral("Escape")));
    QTRY_VERIFY(!chooser(session));
    QCOMPARE(session.desktop().waitForWindows(session.helper().processId(), 2).size(), 2);
    QVERIFY(session.isExpanded());
    QVERIFY(session.main().show());
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestFileChooser::hidingClosesTheChooser()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    QVERIFY(session.main().hide());
    QTRY_COMPARE(session.desktop().mappedWindows(session.helper().processId()).size(), 0);
    QVERIFY(session.main().show());
    QCOMPARE(session.desktop().waitForWindows(session.helper().processId(), 1).size(), 1);
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestFileChooser::droppedItemClosesTheChooser()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    session.main().sendSnapshot(snapshot(2, {item("b2", "am", {})}));
    QCOMPARE(session.desktop().waitForWindows(session.helper().processId(), 1).size(), 1);
    QVERIFY(session.main().show());
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestFileChooser::otherEditorClosesTheChooser()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    session.main().sendSnapshot(snapshot(2, {item("b1", "am", {})}));
    QTRY_VERIFY(!chooser(session));
    QVERIFY(m_accessibility.waitForNode(session.helper().processId(), QStringLiteral("push button"),
                                        QStringLiteral("Rate")));
    QVERIFY(session.main().show());
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestFileChooser::shutdownEndsTheProgram()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    session.main().sendLine("SHUTDOWN");
    QCOMPARE(session.helper().waitForExitCode(), std::make_optional(0));
}

void TestFileChooser::lostLinkEndsTheProgram()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(openChooser(session));
    session.main().hangUp();
    QCOMPARE(session.helper().waitForExitCode(), std::make_optional(0));
}

QTEST_GUILESS_MAIN(TestFileChooser)

#include "tst_file_chooser.moc"
