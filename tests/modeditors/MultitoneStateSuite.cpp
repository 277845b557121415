#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"
#include "support/Ink.h"
#include "support/TouchCounter.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QSet>
#include <QTableWidget>
#include <QTest>
#include <QVector>

namespace {

constexpr char fullState[] =
    R"({"PhaseMode":1, "Seed":12345, "Count":3, "FreqSpacing":1e6, "NotchWidth":2500})";
constexpr char fullProfile[] = R"({"randomMode":true, "discreteKeepToneMode":true, "candidateTones":[
    {"requestedFrequency":3e6, "latticeIndex":7},
    {"requestedFrequency":1e6, "latticeIndex":2, "enabled":true},
    {"requestedFrequency":-2e6, "latticeIndex":-4, "enabled":false}]})";

} // namespace

// What the multitone editor shows of state and profile.
class MultitoneStateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void fieldText_data();
    void fieldText();
    void phase_data();
    void phase();
    void rowsMoveWithTheSeed_data();
    void rowsMoveWithTheSeed();
    void discreteMode_data();
    void discreteMode();
    void tones();
    void tonesAreSorted();
    void othersThanObjectsAreNoTones();
    void rowsAreReused();
    void applyingEmitsNothing();
    void anEqualStateTouchesNothing();
    void theMarkIsSeen();
    void aCutCaptionIsTold();

private:
    [[nodiscard]] QString cell(const char* name) const;
    // "1 1MHz on 2" for each row.
    [[nodiscard]] QStringList rows() const;

    std::unique_ptr<EditorFixture> m_fixture;
    QTableWidget* m_table = nullptr;
};

void MultitoneStateSuite::init()
{
    m_fixture = std::make_unique<EditorFixture>(QStringLiteral("multitone"));
    m_table = m_fixture->find<QTableWidget>(QStringLiteral("toneTable"));
}

QString MultitoneStateSuite::cell(const char* name) const
{
    const auto* const grid = qobject_cast<QGridLayout*>(m_fixture->editor().layout());
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    grid->getItemPosition(grid->indexOf(m_fixture->find<QWidget>(QLatin1String(name))), &row, &column,
                          &rowSpan, &columnSpan);
    return QStringLiteral("%1 %2 %3 %4").arg(row).arg(column).arg(rowSpan).arg(columnSpan);
}

QStringList MultitoneStateSuite::rows() const
{
    QStringList lines;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QTableWidgetItem* const mark = m_table->item(row, 2);
        lines.append(
            QStringLiteral("%1 %2 %3 %4")
                .arg(m_table->item(row, 0)->text(), m_table->item(row, 1)->text(),
                     mark->checkState() == Qt::Checked ? QStringLiteral("on") : QStringLiteral("off"),
                     mark->data(Qt::UserRole).toString()));
    }
    return lines;
}

void MultitoneStateSuite::fieldText_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* button, const char* key, const QJsonValue& value, const char* text) {
        QTest::addRow("%s %s", key, text)
            << QString::fromLatin1(button) << QString::fromLatin1(key) << value << QString::fromLatin1(text);
    };
    row("btnSeed", "Seed", 12345, "12345");
    row("btnSeed", "Seed", 1.5, "2");
    row("btnSeed", "Seed", -1.5, "-1");
    row("btnSeed", "Seed", QJsonValue(), "0");
    row("btnCount", "Count", 4096, "4096");
    row("btnCount", "Count", QJsonValue(), "0");
    row("btnFreqSpacing", "FreqSpacing", 100e3, "100kHz");
    row("btnFreqSpacing", "FreqSpacing", QJsonValue(), "0Hz");
    row("btnNotchWidth", "NotchWidth", 2500.5, "2.5005kHz");
}

void MultitoneStateSuite::fieldText()
{
    QFETCH(const QString, button);
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    m_fixture->apply({{key, value}});
    QTEST(m_fixture->label(button), "text");
}

void MultitoneStateSuite::phase_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("label");
    QTest::newRow("fixed") << QJsonValue(0) << 0 << QStringLiteral("Fixed");
    QTest::newRow("random") << QJsonValue(1) << 1 << QStringLiteral("Random");
    QTest::newRow("parabolic") << QJsonValue(2) << 2 << QStringLiteral("Parabolic");
    QTest::newRow("missing") << QJsonValue() << 0 << QStringLiteral("Fixed");
    QTest::newRow("beyond the entries") << QJsonValue(3) << -1 << QString();
    QTest::newRow("below zero") << QJsonValue(-1) << -1 << QString();
}

void MultitoneStateSuite::phase()
{
    QFETCH(const QJsonValue, value);
    m_fixture->apply({{QStringLiteral("PhaseMode"), 1}}); // something else before
    m_fixture->apply({{QStringLiteral("PhaseMode"), value}});
    const auto* const picker = m_fixture->find<EnumTextButton>(QStringLiteral("btnTonePhase"));
    QTEST(picker->currentEnum(), "index");
    QTEST(picker->labelText(), "label");
}

void MultitoneStateSuite::rowsMoveWithTheSeed_data()
{
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("random");
    for (const bool before : {false, true}) {
        for (const bool random : {false, true}) {
            QTest::addRow("%s, then %s", before ? "random" : "not", random ? "random" : "not")
                << before << random;
        }
    }
}

void MultitoneStateSuite::rowsMoveWithTheSeed()
{
    QFETCH(const bool, before);
    QFETCH(const bool, random);
    m_fixture->apply({}, {{QStringLiteral("randomMode"), before}});
    m_fixture->apply({}, {{QStringLiteral("randomMode"), random}});
    QCOMPARE(m_fixture->find<QWidget>(QStringLiteral("btnSeed"))->isHidden(), !random);
    QCOMPARE(cell("btnSeed"), QStringLiteral("1 0 1 1"));
    QCOMPARE(cell("btnFreqSpacing"), QStringLiteral("1 1 1 1"));
    QCOMPARE(cell("btnNotchWidth"), QStringLiteral("2 1 1 1"));
    QCOMPARE(cell("btnCount"), QStringLiteral("%1 0 1 1").arg(random ? 2 : 1));
    QCOMPARE(cell("btnDiscreteKeepToneMode"), QStringLiteral("%1 0 1 1").arg(random ? 3 : 2));
    QCOMPARE(cell("toneTable"), QStringLiteral("%1 0 1 2").arg(random ? 4 : 3));
    const auto* const grid = qobject_cast<QGridLayout*>(m_fixture->editor().layout());
    QCOMPARE(grid->rowStretch(3), random ? 0 : 1);
    QCOMPARE(grid->rowStretch(4), random ? 1 : 0);
    QCOMPARE(grid->count(), 10);
    // The spare height goes to the table.
    QWidget* const window = m_fixture->editor().window();
    m_fixture->editor().layout()->activate();
    const int tableHeight = m_table->height();
    window->resize(window->width(), window->height() + 200);
    QTRY_VERIFY(m_table->height() >= tableHeight + 190);
    QCOMPARE(m_fixture->find<QWidget>(QStringLiteral("btnCount"))->height(), 60);
    NumericFieldSpec spec;
    QCOMPARE(m_fixture->editor().describeNumericField(QStringLiteral("Seed"), spec), random);
}

void MultitoneStateSuite::discreteMode_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("discrete");
    QTest::newRow("on") << QByteArray(R"({"discreteKeepToneMode":true})") << true;
    QTest::newRow("off") << QByteArray(R"({"discreteKeepToneMode":false})") << false;
    QTest::newRow("missing") << QByteArray("{}") << false;
}

void MultitoneStateSuite::discreteMode()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const bool, discrete);
    for (const bool before : {true, false}) {
        m_fixture->apply({}, {{QStringLiteral("discreteKeepToneMode"), before}});
        m_fixture->apply({}, parsed(profile.constData()));
        QCOMPARE(m_fixture->find<SwitchButton>(QStringLiteral("btnDiscreteKeepToneMode"))->status(),
                 discrete);
        const auto* const notch = m_fixture->find<QWidget>(QStringLiteral("btnNotchWidth"));
        QCOMPARE(notch->isHidden(), discrete);
        QCOMPARE(notch->isEnabled(), !discrete);
        QCOMPARE(m_table->isEnabled(), discrete);
        QVERIFY(m_table->isVisible());
    }
}

void MultitoneStateSuite::tones()
{
    m_fixture->apply(parsed(fullState), parsed(fullProfile));
    QCOMPARE(rows().join(QLatin1Char('|')), QStringLiteral("1 -2MHz off -4|2 1MHz on 2|3 3MHz off 7"));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        for (int column = 0; column < m_table->columnCount(); ++column) {
            QCOMPARE(m_table->item(row, column)->flags(), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        }
        QCOMPARE(m_table->rowHeight(row), 45);
        QCOMPARE(m_table->item(row, 2)->text(), QString());
        QCOMPARE(m_table->item(row, 2)->data(Qt::UserRole).type(), QVariant::Int);
    }
    m_fixture->apply(parsed(fullState), {});
    QCOMPARE(rows(), QStringList());
}

void MultitoneStateSuite::tonesAreSorted()
{
    QJsonArray tones;
    for (int i = 0; i < 500; ++i) {
        tones.append(QJsonObject{{QStringLiteral("requestedFrequency"), (i * 7919) % 251},
                                 {QStringLiteral("latticeIndex"), i}});
    }
    m_fixture->apply({}, {{QStringLiteral("candidateTones"), tones}});
    QCOMPARE(m_table->rowCount(), tones.size());
    QSet<int> indices;
    int previous = -1;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const int index = m_table->item(row, 2)->data(Qt::UserRole).toInt();
        const int frequency = (index * 7919) % 251;
        QVERIFY(frequency >= previous);
        previous = frequency;
        indices.insert(index);
        QCOMPARE(m_table->item(row, 1)->text(), QStringLiteral("%1Hz").arg(frequency));
        QCOMPARE(m_table->item(row, 0)->text(), QString::number(row + 1));
    }
    QCOMPARE(indices.size(), tones.size());
}

void MultitoneStateSuite::othersThanObjectsAreNoTones()
{
    m_fixture->apply({}, parsed(R"({"candidateTones":[1, "x", null, [], true, {}, {"requestedFrequency":"x",
        "enabled":1, "latticeIndex":1.5}]})"));
    QCOMPARE(rows().join(QLatin1Char('|')), QStringLiteral("1 0Hz off 0|2 0Hz off 0"));
    m_fixture->apply({}, parsed(R"({"candidateTones":{"a":1}})"));
    QCOMPARE(rows(), QStringList());
    QVERIFY(TestSupport::hasInk(m_table->viewport())); // it says that there are none
}

void MultitoneStateSuite::rowsAreReused()
{
    m_fixture->apply({}, parsed(fullProfile));
    const auto items = [this] {
        QVector<QTableWidgetItem*> all;
        for (int row = 0; row < m_table->rowCount(); ++row) {
            all << m_table->item(row, 0) << m_table->item(row, 1) << m_table->item(row, 2);
        }
        return all;
    };
    const QVector<QTableWidgetItem*> before = items();
    int changes = 0;
    connect(m_table, &QTableWidget::itemChanged, this, [&changes] { ++changes; });
    m_fixture->apply({}, parsed(fullProfile));
    QCOMPARE(changes, 0);
    QJsonObject profile = parsed(fullProfile);
    QJsonArray tones = profile.value(QStringLiteral("candidateTones")).toArray();
    tones.append(QJsonObject{{QStringLiteral("requestedFrequency"), 4e6}});
    tones.removeFirst();
    profile.insert(QStringLiteral("candidateTones"), tones);
    m_fixture->apply({}, profile);
    QCOMPARE(items(), before);
    QCOMPARE(rows().join(QLatin1Char('|')), QStringLiteral("1 -2MHz off -4|2 1MHz on 2|3 4MHz off 0"));
}

void MultitoneStateSuite::applyingEmitsNothing()
{
    for (const bool on : {true, false, true}) {
        m_fixture->apply(parsed(fullState), parsed(fullProfile), on);
        QCOMPARE(m_fixture->editor().isModulationEnabled(), on);
        m_fixture->apply({}, {}, !on);
        QCOMPARE(m_fixture->editor().isModulationEnabled(), !on);
    }
    QCOMPARE(m_fixture->emitted(), 0);
}

void MultitoneStateSuite::anEqualStateTouchesNothing()
{
    m_fixture->apply(parsed(fullState), parsed(fullProfile), true);
    TestSupport::TouchCounter counter(m_fixture->editor());
    QCoreApplication::processEvents();
    QTRY_VERIFY([&counter] {
        counter.touches = 0;
        QCoreApplication::processEvents();
        return counter.touches == 0;
    }());
    m_fixture->apply(parsed(fullState), parsed(fullProfile), true);
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
    m_fixture->apply(parsed(fullState), {}, true);
    QTRY_VERIFY(counter.touches > 0); // the counter counts
}

// The mark's box has one colour in the middle of its left edge when checked, and another when not.
void MultitoneStateSuite::theMarkIsSeen()
{
    m_fixture->apply({}, parsed(fullProfile));
    const QImage image = m_table->viewport()->grab().toImage();
    const auto marked = [&](int row) {
        const QRect rect = m_table->visualItemRect(m_table->item(row, 2));
        QSet<QRgb> colors;
        for (int x = rect.left(); x < rect.right(); ++x) {
            colors.insert(image.pixel(x, rect.center().y()));
        }
        return colors;
    };
    QVERIFY(marked(0) != marked(1));
    QCOMPARE(marked(0), marked(2));
}

void MultitoneStateSuite::aCutCaptionIsTold()
{
    const auto tip = [this] { return m_table->horizontalHeaderItem(1)->toolTip(); };
    m_fixture->apply({}, parsed(fullProfile));
    QCOMPARE(tip(), QString());
    QWidget* const window = m_fixture->editor().window();
    const int width = window->width();
    window->resize(300, window->height());
    QTRY_COMPARE(tip(), QStringLiteral("FrequencyOffset"));
    window->resize(width, window->height());
    QTRY_COMPARE(tip(), QString());
}

std::unique_ptr<QObject> makeMultitoneStateSuite()
{
    return std::make_unique<MultitoneStateSuite>();
}

#include "MultitoneStateSuite.moc"
