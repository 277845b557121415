#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"
#include "support/TouchCounter.h"

#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

// How the editor shows what it is given.
class QuickStateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<QuickFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void text_data();
    void text();
    void autoScale();
    void loadButton_data();
    void loadButton();
    void failureIsToldAtOnce();
    void failureHidesNoEntry_data();
    void failureHidesNoEntry();
    void enabledButtons_data();
    void enabledButtons();
    void enableSwitchNeedsAFile_data();
    void enableSwitchNeedsAFile();
    void applyingEmitsNothing();
    void equalStateTouchesNothing();

private:
    [[nodiscard]] bool isUsable(const char* name) const
    {
        return m_fixture->editor.find<QWidget>(QLatin1String(name))->isEnabled();
    }

    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickStateSuite::text_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* button, const char* state, const QString& shown) {
        QTest::addRow("%s %s", button, state)
            << QString::fromLatin1(button) << QString::fromLatin1(state) << shown;
    };
    row("btnIQScale", "{}", QStringLiteral("100 %"));
    row("btnIQScale", R"({"iQScale":"80"})", QStringLiteral("100 %"));
    row("btnIQScale", R"({"iQScale":0})", QStringLiteral("0 %"));
    row("btnIQScale", R"({"iQScale":62.5})", QStringLiteral("62.5 %"));
    row("btnIQScale", R"({"iQScale":33.336})", QStringLiteral("33.34 %"));
    row("btnSampleRate", "{}", QStringLiteral("0Hz"));
    row("btnSampleRate", R"({"sampleRate":61440000})", QStringLiteral("61.44MHz"));
    row("btnPeriodLen", "{}", QStringLiteral("0s / 0s"));
    row("btnPeriodLen", R"({"periodLength":0.001,"signalLength":2.5e-7})", QStringLiteral("1ms / 250ns"));
    row("btnPeriodLen", R"({"periodLength":1.23456,"signalLength":61})", QStringLiteral("1.235s / 61s"));
    for (const auto& field : {std::pair("btnPeriod", "period"), std::pair("btnSamplesToUse", "samplesToUse"),
                              std::pair("btnSampleOffset", "sampleOffset")}) {
        const auto state = [&](const char* value) -> QByteArray {
            return QByteArray("{\"") + field.second + "\":" + value + "}";
        };
        row(field.first, "{}", QStringLiteral("0"));
        row(field.first, state("26214400").constData(), QStringLiteral("26214400"));
        row(field.first, state("2.5").constData(), QStringLiteral("3"));
        row(field.first, state("2.4").constData(), QStringLiteral("2"));
        row(field.first, state("-2.5").constData(), QStringLiteral("-2"));
        row(field.first, state("1e10").constData(), QStringLiteral("10000000000"));
    }
}

void QuickStateSuite::text()
{
    QFETCH(const QString, button);
    QFETCH(const QString, state);
    QFETCH(const QString, shown);
    m_fixture->apply({}, parsed(state.toLatin1().constData()));
    QCOMPARE(m_fixture->editor.label(button), shown);
}

void QuickStateSuite::autoScale()
{
    const auto* const autoScale = m_fixture->editor.find<SwitchButton>(QStringLiteral("btnAutoScale"));
    for (const bool on : {true, false}) {
        m_fixture->apply({}, {{QStringLiteral("autoScale"), on}});
        QCOMPARE(autoScale->status(), on);
    }
    m_fixture->apply({}, {{QStringLiteral("autoScale"), true}});
    m_fixture->apply();
    QCOMPARE(autoScale->status(), false);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickStateSuite::loadButton_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("idle") << QStringLiteral("{}") << QStringLiteral("Load") << QStringLiteral("") << true;
    QTest::newRow("loading") << QStringLiteral(R"({"loadInProgress":true})") << QStringLiteral("Loading...")
                             << QStringLiteral("") << false;
    QTest::newRow("failed") << QStringLiteral(R"({"loadError":"no WAV file"})")
                            << QStringLiteral("Load Failed") << QStringLiteral("no WAV file") << true;
    QTest::newRow("loading again after a failure")
        << QStringLiteral(R"({"loadInProgress":true,"loadError":"no WAV file"})")
        << QStringLiteral("Loading...") << QStringLiteral("no WAV file") << false;
    QTest::newRow("wrong types") << QStringLiteral(R"({"loadInProgress":1,"loadError":3})")
                                 << QStringLiteral("Load") << QStringLiteral("") << true;
}

void QuickStateSuite::loadButton()
{
    QFETCH(const QString, profile);
    QFETCH(const QString, text);
    QFETCH(const QString, toolTip);
    QFETCH(const bool, enabled);
    const auto* const load = m_fixture->editor.find<QPushButton>(QStringLiteral("btnLoad"));
    m_fixture->apply(parsed(profile.toLatin1().constData()));
    QCOMPARE(load->text(), text);
    QCOMPARE(load->toolTip(), toolTip);
    QCOMPARE(load->isEnabled(), enabled);
    m_fixture->apply();
    QCOMPARE(load->text(), QStringLiteral("Load"));
    QCOMPARE(load->toolTip(), QString());
    QVERIFY(load->isEnabled());
}

// Whoever uses a finger cannot point at the button to ask why.
void QuickStateSuite::failureIsToldAtOnce()
{
    const auto* const refusal = m_fixture->editor.find<QLabel>(QStringLiteral("refusal"));
    const QTableWidget& table = m_fixture->table();
    const QRect place = table.geometry();
    QVERIFY(!refusal->isVisible());
    m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no WAV file")}});
    QVERIFY(refusal->isVisible());
    QCOMPARE(refusal->text(), QStringLiteral("no WAV file"));
    QCOMPARE(table.geometry(), place);
    QVERIFY(table.viewport()->geometry().contains(refusal->geometry()));
    m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no samples")},
                      {QStringLiteral("loadInProgress"), true}});
    QVERIFY(!refusal->isVisible());
    m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no samples")}});
    QCOMPARE(refusal->text(), QStringLiteral("no samples"));
    m_fixture->apply();
    QVERIFY(!refusal->isVisible());
}

// Also where they would just fit without it.
void QuickStateSuite::failureHidesNoEntry_data()
{
    QTest::addColumn<int>("files");
    for (int files = 1; files <= 30; ++files) {
        QTest::addRow("%d", files) << files;
    }
}

void QuickStateSuite::failureHidesNoEntry()
{
    QFETCH(const int, files);
    for (int i = 0; i < files; ++i) {
        m_fixture->addFile(QStringLiteral("%1.wav").arg(i, 2, 10, QLatin1Char('0')), {});
    }
    m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no WAV file")}});
    QTableWidget& table = m_fixture->table();
    const auto* const refusal = m_fixture->editor.find<QLabel>(QStringLiteral("refusal"));
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    const int bottom =
        table.viewport()->y() + table.visualItemRect(table.item(table.rowCount() - 1, 0)).bottom();
    QVERIFY(bottom < refusal->y());
    const int top = table.verticalScrollBar()->value();
    m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no samples")}});
    QCOMPARE(table.verticalScrollBar()->value(), top);
}

void QuickStateSuite::enabledButtons_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<bool>("fields");
    QTest::addColumn<bool>("scale");
    const QString file = QStringLiteral(R"({"loadedFilePath":"/w/a.wav"})");
    QTest::newRow("no file") << QStringLiteral("{}") << false << false << false;
    QTest::newRow("file") << file << false << true << true;
    QTest::newRow("auto scale") << file << true << true << false;
    QTest::newRow("I/Q recording") << QStringLiteral(R"({"loadedFilePath":"/w/a.wav","iqsWavLoaded":true})")
                                   << false << true << false;
}

void QuickStateSuite::enabledButtons()
{
    QFETCH(const QString, profile);
    QFETCH(const bool, autoScale);
    QFETCH(const bool, fields);
    QFETCH(const bool, scale);
    m_fixture->apply(parsed(profile.toLatin1().constData()), {{QStringLiteral("autoScale"), autoScale}});
    for (const char* name : {"btnSampleRate", "btnPeriod", "btnSamplesToUse", "btnSampleOffset", "enabled"}) {
        QVERIFY2(isUsable(name) == fields, name);
    }
    QCOMPARE(isUsable("btnIQScale"), scale);
    for (const char* name : {"btnAutoScale", "btnPeriodLen", "btnLoad"}) {
        QVERIFY2(isUsable(name), name);
    }
}

void QuickStateSuite::enableSwitchNeedsAFile_data()
{
    QTest::addColumn<bool>("file");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("shown");
    QTest::newRow("off, no file") << false << false << false;
    QTest::newRow("on, no file") << false << true << false;
    QTest::newRow("off, file") << true << false << false;
    QTest::newRow("on, file") << true << true << true;
}

void QuickStateSuite::enableSwitchNeedsAFile()
{
    QFETCH(const bool, file);
    QFETCH(const bool, enabled);
    QFETCH(const bool, shown);
    const QString path = file ? QStringLiteral("/w/a.wav") : QString();
    const auto* const enable = m_fixture->editor.find<SwitchButton>(QStringLiteral("enabled"));
    // Whatever was shown before.
    for (const bool before : {false, true}) {
        m_fixture->apply({{QStringLiteral("loadedFilePath"), QStringLiteral("/w/b.wav")}}, {}, before);
        QCOMPARE(enable->status(), before);
        m_fixture->apply({{QStringLiteral("loadedFilePath"), path}}, {}, enabled);
        QCOMPARE(enable->isEnabled(), file);
        QCOMPARE(enable->status(), shown);
        QCOMPARE(m_fixture->editor.editor().isModulationEnabled(), shown);
    }
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickStateSuite::applyingEmitsNothing()
{
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    for (const bool on : {true, false, true}) {
        m_fixture->applyLoaded(on ? QStringLiteral("a.wav") : QStringLiteral("b.wav"),
                               {{QStringLiteral("autoScale"), on}, {QStringLiteral("period"), int(on)}},
                               {{QStringLiteral("loadInProgress"), on}});
        m_fixture->apply({}, {}, on);
    }
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("48k / 1s"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickStateSuite::equalStateTouchesNothing()
{
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    m_fixture->addWaveform(QStringLiteral("b.wav"));
    const QJsonObject state = parsed(R"({"autoScale":true,"iQScale":50,"sampleRate":1e6,"period":5})");
    const auto apply = [&](bool enabled) {
        m_fixture->apply({{QStringLiteral("loadError"), QStringLiteral("no")}}, state, enabled);
    };
    apply(true); // without a file the switch stays off
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("b")), QStringLiteral("48k / 1s"));
    QCoreApplication::processEvents();
    const QStringList shown = m_fixture->editor.shown();
    const TestSupport::TouchCounter counter(m_fixture->editor.editor());
    apply(true);
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
    QCOMPARE(m_fixture->editor.shown(), shown);
}

std::unique_ptr<QObject> makeQuickStateSuite()
{
    return std::make_unique<QuickStateSuite>();
}

#include "QuickStateSuite.moc"
