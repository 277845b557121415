#include "controls/Quantities.h"
#include "controls/QuantityText.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <cmath>
#include <limits>

using Controls::ParsedQuantity;
using Controls::parseQuantity;
using Controls::Unit;
using Status = ParsedQuantity::Status;

Q_DECLARE_METATYPE(QVector<Controls::Unit>)

namespace {

constexpr int noUnit = -1;
enum FrequencyUnit { GHz, MHz, kHz, Hz };
enum TimeUnit { s, ms, us, ns, ps };

const char* const frequencyUnitList = "GHz, MHz, kHz or Hz";
const char* const timeUnitList = "s, ms, \u00b5s, ns or ps";
const char* const numberWanted = "Type a number, such as 2.4 or -20.";
const char* const notOneNumber = "This is not one plain number. Type it like 1234.5 or 1e9.";

QByteArray otherUnit(const char* list)
{
    return QByteArray("This is not a unit of the value. Use ") + list + '.';
}

} // namespace

// What each text means; how exactly is the matter of tst_quantity_exactness.
class QuantityTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void number_data();
    void number();
    void unit_data();
    void unit();
    void unitOfAFieldWithOneUnit();
    void exactUnitTextComesFirst();
    void incomplete_data();
    void incomplete();
    void refusal_data();
    void refusal();
    void numberWithoutUnitCountsInTheGivenOne_data();
    void numberWithoutUnitCountsInTheGivenOne();
    void userPage_data();
    void userPage();
};

void QuantityTextTest::number_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");

    const auto row = [](const char* text, double value) {
        QTest::newRow(text) << QString::fromUtf8(text) << value;
    };

    for (const char* text :
         {"5", "+5", "005", "5.", "5,", "5.0", "5,00", "5e0", "0.5e1", "50E-1", " 5 ", "\t5\r\n",
          "\u00a05\u00a0", "\u202f5\u2009", "5e00000000000000000000", "\u0665", "\uff15"}) {
        row(text, 5.0);
    }
    for (const char* text :
         {"-20", "\u221220", "-20.0", "-2e1", "-2e+1", "\u2212200e-1", "\u2212200e\u22121"}) {
        row(text, -20.0);
    }
    for (const char* text : {"0", "-0", "0.000", "-0,0", "0e999999999999", "+.0", "0e-999999999999"}) {
        row(text, 0.0);
    }
    row(".5", 0.5);
    row("-,5", -0.5);
    row("1e9", 1e9);
    row("1e308", 1e308);
    row("4.9e-324", std::numeric_limits<double>::denorm_min());

    // One point is always the decimal mark.
    row("1.234", 1.234);
    row("12.000", 12.0);
    row("1234.567", 1234.567);
    // One comma that cannot group digits is, too.
    row("2,4", 2.4);
    row("0,412", 0.412);
    row("00,412", 0.412);
    row(",412", 0.412);
    row("1,23", 1.23);
    row("1,2345", 1.2345);
    row("1234,567", 1234.567);
    // Of two kinds of marks the last one is.
    row("1.234,5", 1234.5);
    row("1,234.5", 1234.5);
    row("1,234.567", 1234.567);
    row("1.234,567", 1234.567);
    row("-12,345.5", -12345.5);
    row("1,234,567.5", 1234567.5);
    row("1.234.567,5e3", 1234567500.0);
    // A mark that comes twice groups digits.
    row("1,234,567", 1234567.0);
    row("1.234.567", 1234567.0);
    row("100,000,000", 1e8);
    // Marks that only group digits.
    row("1 234", 1234.0);
    row("1 234 567.5", 1234567.5);
    row("1\u00a0234,5", 1234.5);
    row("1\u202f234\u202f567,5", 1234567.5);
    row("1\u2009234", 1234.0);
    row("1'234'567.5", 1234567.5);
    row("1\u2019234,567", 1234.567);
    // Digits of other scripts, with the Arabic marks.
    row("\u0661\u0662\u0663\u0664\u066b\u0665", 1234.5);
    row("\u0661\u066c\u0662\u0663\u0664", 1234.0);
    row("-\u06f1\u066c\u06f2\u06f3\u06f4\u066b\u06f5", -1234.5);
    row("\u0967,\u0968\u0969\u096a.\u096b", 1234.5);
    row("\uff12.\uff14e\uff13", 2400.0);
}

void QuantityTextTest::number()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    const ParsedQuantity parsed = parseQuantity(text, Quantities::plain(), noUnit);
    QCOMPARE(parsed.refusal, QString());
    QVERIFY(parsed.status == Status::Value);
    QVERIFY2(parsed.value == value, qPrintable(QString::number(parsed.value, 'g', 17)));
    QVERIFY2(parsed.value != 0.0 || !std::signbit(parsed.value), "zero has no sign");
    QCOMPARE(parsed.unitIndex, noUnit);
}

void QuantityTextTest::unit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<Unit>>("units");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");

    const auto frequency = [](std::initializer_list<const char*> texts, double value, int unit) {
        for (const char* text : texts) {
            QTest::addRow("frequency %s", text)
                << QString::fromUtf8(text) << Quantities::frequency() << value << unit;
        }
    };
    frequency(
        {"2.4 GHz", "2.4GHz", "2,4 GHz", "2.4\u00a0GHz", "2.4\tGHz", "2.4 ghz", "2.4GHZ", "2.4g", "2.4 G"},
        2.4e9, GHz);
    frequency({"2.412 GHz", "2412e-3g"}, 2.412e9, GHz);
    frequency({"5 MHz", "5mhz", "5MHZ", "5mHZ", "5 M", "5m", "5e0m"}, 5e6, MHz);
    frequency({"100 kHz", "100k", "100 K", "100KHz", "100 khz", "1e2 kHz"}, 1e5, kHz);
    frequency({"1 234 Hz", "1234hz", "1,234.0 HZ", "1234 h", "1.234e3H"}, 1234.0, Hz);
    frequency({"1e9 Hz"}, 1e9, Hz);
    frequency({"1e9GHz"}, 1e18, GHz);

    const auto time = [](std::initializer_list<const char*> texts, double value, int unit) {
        for (const char* text : texts) {
            QTest::addRow("time %s", text) << QString::fromUtf8(text) << Quantities::time() << value << unit;
        }
    };
    time({"3 s", "3S"}, 3.0, s);
    time({"3 ms", "3m", "3 mS"}, 3e-3, ms);
    time({"3 \u00b5s", "3\u00b5", "3 \u03bcs", "3\u03bc", "3us", "3u", "3 US", "3U"}, 3e-6, us);
    time({"3 ns", "3n", "3NS", "3 N"}, 3e-9, ns);
    time({"3 ps", "3p"}, 3e-12, ps);
}

void QuantityTextTest::unit()
{
    QFETCH(QString, text);
    QFETCH(QVector<Unit>, units);
    QFETCH(double, value);
    for (int current = -1; current <= units.size(); ++current) {
        const ParsedQuantity parsed = parseQuantity(text, units, current);
        QCOMPARE(parsed.refusal, QString());
        QVERIFY(parsed.status == Status::Value);
        QVERIFY2(parsed.value == value, qPrintable(QString::number(parsed.value, 'g', 17)));
        QTEST(parsed.unitIndex, "unit");
    }
}

void QuantityTextTest::unitOfAFieldWithOneUnit()
{
    for (const char* text : {"-20 dBm", "-20dbm", "-20 DBM"}) {
        const ParsedQuantity parsed = parseQuantity(QLatin1String(text), Quantities::level(), noUnit);
        QCOMPARE(parsed.value, -20.0);
        QCOMPARE(parsed.unitIndex, 0);
    }
    QCOMPARE(parseQuantity(QStringLiteral("3 db"), Quantities::levelStep(), noUnit).value, 3.0);
}

void QuantityTextTest::exactUnitTextComesFirst()
{
    const QVector<Unit> units = {
        {QStringLiteral("MHz"), 6}, {QStringLiteral("Hz"), 0}, {QStringLiteral("mHz"), -3}};
    QCOMPARE(parseQuantity(QStringLiteral("5 MHz"), units, noUnit).value, 5e6);
    QCOMPARE(parseQuantity(QStringLiteral("5 mHz"), units, noUnit).value, 5e-3);
    QCOMPARE(parseQuantity(QStringLiteral("5M"), units, noUnit).value, 5e6);
    QCOMPARE(parseQuantity(QStringLiteral("5m"), units, noUnit).value, 5e-3);
    QVERIFY(parseQuantity(QStringLiteral("5 mhz"), units, noUnit).status == Status::Refused);

    const QVector<Unit> energy = {{QStringLiteral("keV"), 3}, {QStringLiteral("eV"), 0}};
    QCOMPARE(parseQuantity(QStringLiteral("5eV"), energy, noUnit).value, 5.0);
    QCOMPARE(parseQuantity(QStringLiteral("5e3eV"), energy, noUnit).value, 5e3);
}

void QuantityTextTest::incomplete_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("whenAccepted");

    const auto row = [](const char* text, const char* whenAccepted) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(whenAccepted);
    };
    for (const char* text : {"", " \u00a0\n", "-", "+", "\u2212", "- ", ".", "-.", "+,", ","}) {
        row(text, numberWanted);
    }
    for (const char* text : {"1e", "1E", "1e-", "1.5e+", "-2,4e\u2212", "1e "}) {
        row(text, "The digits after the e are missing. Type it like 1e9.");
    }
    for (const char* text : {"2.4 GH", "2.4gh", "5 mH", "5kh"}) {
        row(text, otherUnit(frequencyUnitList).constData());
    }
}

void QuantityTextTest::incomplete()
{
    QFETCH(QString, text);
    const ParsedQuantity parsed = parseQuantity(text, Quantities::frequency(), GHz);
    QVERIFY(parsed.status == Status::Incomplete);
    QTEST(parsed.refusal, "whenAccepted");
    QCOMPARE(parsed.unitIndex, noUnit);
}

void QuantityTextTest::refusal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<Unit>>("units");
    QTest::addColumn<QString>("sentence");

    const auto row = [](const char* text, const QVector<Unit>& units, const QByteArray& sentence) {
        QTest::addRow("%s: %s", units.value(0).text.toUtf8().constData(), text)
            << QString::fromUtf8(text) << units << QString::fromUtf8(sentence);
    };
    const auto rows = [&](std::initializer_list<const char*> texts, const QVector<Unit>& units,
                          const QByteArray& sentence) {
        for (const char* text : texts) {
            row(text, units, sentence);
        }
    };
    const QVector<Unit> frequency = Quantities::frequency();
    const QVector<Unit> time = Quantities::time();

    row("1,234", frequency, "This could mean 1.234 or 1234. Type it without the comma.");
    row("-12,000 kHz", frequency, "This could mean -12.000 or -12000. Type it without the comma.");
    row("999,999e3", frequency, "This could mean 999.999 or 999999. Type it without the comma.");
    row("\u0661,\u0662\u0663\u0664", frequency, "This could mean 1.234 or 1234. Type it without the comma.");

    rows({"NaN",     "nan",      "inf",     "-inf",    "\u221e", "--5",    "+-5",
          "- 5",     "GHz",      "e9",      "..",      "-.,",    ".GHz",   "--",
          "\u200e5", "\u200e-5", "\u061c5", "\u20135", "(5)",    "\u00b2", "\xf0\x9d\x9f\x93",
          "'5",      "-e"},
         frequency, numberWanted);
    rows({"2.412,",      "1,234.",      "1,234,567.",   "1 234.",    "2.412.",    "1.2.3",
          "1,2,3",       "5 5 GHz",     "1 23",         "1  234",    "0 412",     "0,412,000",
          "01,234.5",    "1234,567.8",  "1,23.4",       "1.,5",      "1,,5",      ",5.",
          "1,234.567.8", "1.234,567.8", "1 234'567",    "12,34,567", "1.234 567", "1\u066b234\u066b567",
          "0x10",        "1e9.5",       "1 e9",         "1e 9",      "1e9e9",     "5_000",
          "1_0",         "5\u0665",     "\u0665\u06f5", "1.\u0665",  "1e\u0665",  "5 GHz 3",
          "2.4.GHz1",    "5k6",         "5e+-3",        "1\t234",    "1\u060c5",  "\uff11\uff0e\uff15"},
         frequency, notOneNumber);

    rows({"5 dBm", "5 dB", "5 s", "5 foo", "5 %", "5'", "5-", "5\u00b2", "5\u200e", "5e GHz", "5 GHz.",
          "5 G Hz", "5 THz", "5 \u212aHz", "5 u", "5 \u0413\u0413\u0446", "5 <b>GHz</b>"},
         frequency, otherUnit(frequencyUnitList));
    rows({"5 GHz", "5 min", "5 h", "5 fs", "5 \u039cs", "5 e"}, time, otherUnit(timeUnitList));
    rows({"5 dB", "5 d", "5 m", "5 W", "5 GHz", "5 mdBm"}, Quantities::level(), otherUnit("dBm"));
    rows({"5 dBm", "5 d", "5 %"}, Quantities::levelStep(), otherUnit("dB"));
    rows({"5 GHz", "5 dBm", "5 %", "5k", "5m", "5 s"}, Quantities::plain(),
         "This value has no unit. Type the number alone.");

    row("5 mHz", frequency, "mHz could mean MHz or 0.001 Hz. Use MHz or Hz.");
    rows({"5 M", "5Ms", "5 MS"}, time, "A capital M stands for mega. Use s, ms, \u00b5s, ns or ps.");
    rows({"5 P", "5 Ps", "5 PS"}, time, "A capital P stands for peta. Use s, ms, \u00b5s, ns or ps.");

    rows({"1e309", "-1e309", "1.8e308", "1e300 GHz", "1e999999999999999999999"}, frequency,
         "This number is too large. Type a smaller one.");
    rows({"1e-324", "-1e-400", "2e-324", "1e-999999999999999999999"}, frequency,
         "This number is too close to zero. Type 0 instead.");
    row("1e-320 ps", time, "This number is too close to zero. Type 0 instead.");
}

void QuantityTextTest::refusal()
{
    QFETCH(QString, text);
    QFETCH(QVector<Unit>, units);
    const ParsedQuantity parsed = parseQuantity(text, units, noUnit);
    QTEST(parsed.refusal, "sentence");
    QVERIFY(parsed.status == Status::Refused);
    QCOMPARE(parsed.unitIndex, noUnit);
}

void QuantityTextTest::numberWithoutUnitCountsInTheGivenOne_data()
{
    QTest::addColumn<QVector<Unit>>("units");
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("value");

    QTest::newRow("GHz") << Quantities::frequency() << int(GHz) << 2.4e9;
    QTest::newRow("kHz") << Quantities::frequency() << int(kHz) << 2.4e3;
    QTest::newRow("base unit of a frequency") << Quantities::frequency() << noUnit << 2.4;
    QTest::newRow("beyond the last unit") << Quantities::frequency() << 4 << 2.4;
    QTest::newRow("micro") << Quantities::time() << int(us) << 2.4e-6;
    QTest::newRow("base unit of a time") << Quantities::time() << noUnit << 2.4;
    QTest::newRow("level") << Quantities::level() << 0 << 2.4;
    QTest::newRow("plain number") << Quantities::plain() << noUnit << 2.4;
}

void QuantityTextTest::numberWithoutUnitCountsInTheGivenOne()
{
    QFETCH(QVector<Unit>, units);
    QFETCH(int, unit);
    const ParsedQuantity parsed = parseQuantity(QStringLiteral("2.4"), units, unit);
    QVERIFY(parsed.status == Status::Value);
    QTEST(parsed.value, "value");
    QCOMPARE(parsed.unitIndex, noUnit); // the text names none
}

// The tables of docs/number-entry.md, each under the words that name its field.
void QuantityTextTest::userPage_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<Unit>>("units");
    QTest::addColumn<QString>("readAs");

    QFile page(QStringLiteral(DOCS_DIR "/number-entry.md"));
    QVERIFY2(page.open(QIODevice::ReadOnly), qPrintable(page.fileName()));
    const QRegularExpression rowPattern(QStringLiteral("^\\| `(.*?)` \\| (\\S+) \\|"));
    QVector<Unit> units = Quantities::plain();
    while (!page.atEnd()) {
        const QString line = QString::fromUtf8(page.readLine());
        if (line.startsWith(QLatin1String("In a frequency field"))) {
            units = Quantities::frequency();
        } else if (line.startsWith(QLatin1String("In a time field"))) {
            units = Quantities::time();
        } else if (line.startsWith(QLatin1String("In a level field"))) {
            units = Quantities::level();
        }
        const QRegularExpressionMatch row = rowPattern.match(line);
        if (row.hasMatch()) {
            QTest::newRow(qPrintable(row.captured(1))) << row.captured(1) << units << row.captured(2);
        } else {
            QVERIFY2(!line.startsWith(QLatin1String("| `")), qPrintable(line));
        }
    }
}

void QuantityTextTest::userPage()
{
    QFETCH(QString, text);
    QFETCH(QVector<Unit>, units);
    QFETCH(QString, readAs);
    const ParsedQuantity parsed = parseQuantity(text, units, noUnit);
    if (readAs == QLatin1String("refused")) {
        QVERIFY(parsed.status == Status::Refused);
    } else if (readAs == QLatin1String("unfinished")) {
        QVERIFY(parsed.status == Status::Incomplete);
    } else {
        bool isNumber = false;
        const double expected = readAs.toDouble(&isNumber);
        QVERIFY2(isNumber, qPrintable(readAs));
        QVERIFY(parsed.status == Status::Value);
        QCOMPARE(parsed.value, expected);
    }
}

QTEST_GUILESS_MAIN(QuantityTextTest)
#include "tst_quantity_text.moc"
