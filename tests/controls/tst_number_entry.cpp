#include "controls/EntryScript.h"

#include <QTest>

using namespace EntryScript;
using Controls::BaseUnitAdapter;
using Controls::NumericEntry;

class NumberEntryTest final : public QObject
{
    Q_OBJECT

private slots:
    void frequencyKeys_data();
    void frequencyKeys();
    void powerKeys_data();
    void powerKeys();
    void timeKeys_data();
    void timeKeys();
    void plainKeys_data();
    void plainKeys();
    void wholeKeys_data();
    void wholeKeys();
};

// 2.4 GHz, 9 kHz to 6 GHz, step 1 MHz.
void NumberEntryTest::frequencyKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refusal");
    const auto row = [](const char* name, const char* keys, const char* shown, const char* accepted,
                        const char* refusal = "") {
        QTest::newRow(name) << keys << shown << accepted << refusal;
    };
    const char* const wanted = "Type a number, such as 2.4 or -20.";

    row("untouched enter", "<Enter>", "2.4 GHz", "2400000000");
    row("untouched own unit accepts", "[GHz]", "2.4 GHz", "2400000000");
    row("untouched other unit re-expresses", "[MHz]", "2400 MHz", nothing);
    row("re-expressed value stays the value", "[kHz]<Enter>", "2400000 kHz", "2400000000");
    row("re-expressed twice", "[kHz][MHz][MHz]", "2400 MHz", "2400000000");
    row("moving the cursor types nothing", "<End>[MHz]", "2400 MHz", nothing);
    row("stepped value carries its unit", "<Up>[MHz]", "2401 MHz", nothing);
    row("first digit replaces", "5", "5 GHz", nothing);
    row("typed, enter in the shown unit", "5<Enter>", "5 GHz", "5000000000");
    row("typed, unit key ends", "915[MHz]", "915 MHz", "915000000");
    row("nearest double", "2.412345678[GHz]", "2.412345678 GHz", "2412345678");
    row("comma is a point", "2,45[GHz]", "2.45 GHz", "2450000000");
    row("point first", ".5[GHz]", "0.5 GHz", "500000000");
    row("trailing point", "2.[GHz]", "2. GHz", "2000000000");
    row("leading zeros", "007[kHz]", "7 kHz", nothing, "The minimum is 9 kHz.");
    row("exponent", "1e9[Hz]", "1e9 Hz", "1000000000");
    row("upper-case exponent", "1E6[Hz]", "1e6 Hz", "1000000");
    row("letter ends", "915m", "915 MHz", "915000000");
    row("letter after a blank", "915 m", "915 MHz", "915000000");
    row("capital letter ends", "2.4G", "2.4 GHz", "2400000000");
    row("h for Hz", "9000h", "9000 Hz", "9000");
    row("letter on the untouched value", "m", "2400 MHz", nothing);
    row("spelt out on the untouched value", "mhz", "2400 MHz", nothing);
    row("own letter on the untouched value", "g", "2.4 GHz", "2400000000");
    row("letter that is no unit", "5x", "5 GHz", nothing,
        "This is not a unit of the value. Use GHz, MHz, kHz or Hz.");
    row("letter without a number", "<Clear>g", "", nothing, wanted);
    row("too large stays", "7[GHz]", "7 GHz", nothing, "The maximum is 6 GHz.");
    row("refused unit is the shown one", "<Clear>8[Hz]", "8 Hz", nothing, "The minimum is 9 kHz.");
    row("refused, then spelt out", "7GHz", "7 GHz", nothing, "The maximum is 6 GHz.");
    row("refused, then corrected", "7g<Back>5<Enter>", "5 GHz", "5000000000");
    row("refused, then another unit", "7g[MHz]", "7 MHz", "7000000");
    row("next key clears the refusal", "7g<Left>", "7 GHz", nothing);
    row("negative", "-5[GHz]", "-5 GHz", nothing, "The minimum is 9 kHz.");
    row("at the limit", "6[GHz]", "6 GHz", "6000000000");
    row("just above the limit", "6.000000001[GHz]", "6.000000001 GHz", nothing, "The maximum is 6 GHz.");
    row("empty enter", "<Back><Enter>", "", nothing, wanted);
    row("empty unit key", "<Clear>[MHz]", "", nothing, wanted);
    row("sign alone", "-[MHz]", "- GHz", nothing, wanted);
    row("open exponent", "1e[MHz]", "1e GHz", nothing,
        "The digits after the e are missing. Type it like 1e9.");
    row("backspace clears the selection", "<Back>", "", nothing);
    row("backspace at the end", "<End><Back>", "2. GHz", nothing);
    row("delete at the start", "<Home><Del>", ".4 GHz", nothing);
    row("insert in the middle", "<Home><Right>5", "25.4 GHz", nothing);
    row("left goes to the start", "<Left>1", "12.4 GHz", nothing);
    row("right goes to the end", "<Right>1", "2.41 GHz", nothing);
    row("select all replaces", "123<All>4", "4 GHz", nothing);
    row("typed and selected again is still typed", "915<All>[MHz]", "915 MHz", "915000000");
    row("second point", "1.2.", "1.2 GHz", nothing, "The number has a decimal point already.");
    row("second exponent", "1e3e", "1e3 GHz", nothing, "The number has an exponent already.");
    row("exponent first", "<Clear>e", "", nothing, "Digits come before the e.");
    row("point in the exponent", "1e3.", "1e3 GHz", nothing, "An exponent has no decimal point.");
    row("25 characters", "1234567890123456789012345", "123456789012345678901234 GHz", nothing,
        "No more than 24 characters.");
    row("step up", "<Up>", "2.401 GHz", nothing);
    row("step down twice", "<Down><Down>", "2.398 GHz", nothing);
    row("step from a typed number", "3<Up><Enter>", "3.001 GHz", "3001000000");
    row("step stops at the maximum", "5.9995<Up>", "6 GHz", nothing, "The maximum is 6 GHz.");
    row("step at the maximum", "6<Up>", "6 GHz", nothing, "The maximum is 6 GHz.");
    row("step from beyond comes back", "9<Down>", "6 GHz", nothing, "The maximum is 6 GHz.");
    row("step stops at the minimum", "[MHz]1<Down>", "0.009 MHz", nothing, "The minimum is 9 kHz.");
    row("step to the maximum exactly", "5.999<Up>", "6 GHz", nothing);
    row("step of nothing", "<Clear><Up>", "", nothing, wanted);
    row("paste with unit", "{915 MHz}", "915 MHz", nothing);
    row("pasted with unit, own unit accepts", "{915 MHz}[MHz]", "915 MHz", "915000000");
    row("pasted with unit, other unit re-expresses", "{915 MHz}[GHz]", "0.915 GHz", nothing);
    row("paste without unit", "{2.45}", "2.45 GHz", nothing);
    row("pasted without unit, unit key ends", "{915}[MHz]", "915 MHz", "915000000");
    row("paste beyond the limits", "{7 GHz}<Enter>", "7 GHz", nothing, "The maximum is 6 GHz.");
    row("pasted words", "{hello}", "2.4 GHz", nothing, wanted);
    row("pasted nothing", "{}", "2.4 GHz", nothing, "The clipboard holds no number.");
    row("plus is no harm", "1e+9[Hz]", "1e9 Hz", "1000000000");
    row("star", "5*", "5 GHz", nothing, "\"*\" is not part of a number.");
}

void NumberEntryTest::frequencyKeys()
{
    QFETCH(const QString, keys);
    const QVector<Unit> units = unitsOf(QStringLiteral("frequency"));
    const BaseUnitAdapter scale(units);
    NumericEntry config;
    config.value = 2.4e9;
    config.step = 1e6;
    config.minimum = 9e3;
    config.maximum = 6e9;
    NumberEntry entry(scale, config);
    const NumberEntry::Accepted accepted = play(entry, units, keys);
    QTEST(entry.quantityText(), "shown");
    QTEST(textOf(accepted), "accepted");
    QTEST(entry.refusal(), "refusal");
}

// -20 dBm, no limits, step 5.
void NumberEntryTest::powerKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("accepted");
    const auto row = [](const char* name, const char* keys, const char* shown, const char* accepted) {
        QTest::newRow(name) << keys << shown << accepted;
    };
    row("sign key keeps the value selected", "<Sign>5", "5 dBm", nothing);
    row("sign key on the value", "<Sign><Enter>", "20 dBm", "20");
    row("sign key twice", "<Sign><Sign>", "-20 dBm", nothing);
    row("minus begins a number", "-5[dBm]", "-5 dBm", "-5");
    row("sign key begins a number", "<Clear><Sign>5<Enter>", "-5 dBm", "-5");
    row("sign key while typing", "12<Sign><Enter>", "-12 dBm", "-12");
    row("sign key back", "12<Sign><Sign>3", "123 dBm", nothing);
    row("minus while typing", "12-3", "-123 dBm", nothing);
    row("sign of the exponent", "12e<Sign>1<Enter>", "12e-1 dBm", "1.2");
    row("minus in the exponent", "12e-1<Enter>", "12e-1 dBm", "1.2");
    row("sign with the cursor in the number", "12e1<Home><Sign>", "-12e1 dBm", nothing);
    row("digit before the sign", "-5<Home>1", "-15 dBm", nothing);
    row("negative zero", "-0<Enter>", "-0 dBm", "0");
    row("the only unit spelt out", "-7dBm", "-7 dBm", "-7");
    row("the only unit begun", "-7db", "-7 dBm", nothing);
    row("the only unit begun, letters dropped", "-7db<Back>5", "-75 dBm", nothing);
    row("the only unit in capitals", "-7DBM", "-7 dBm", "-7");
    row("the only unit begun, then enter", "-7d<Enter>", "-7 dBm", "-7");
    row("step across zero", "<Up><Up><Up><Up>", "0 dBm", nothing);
    row("zero has no sign to change", "<Up><Up><Up><Up><Sign>5", "-5 dBm", nothing);
}

void NumberEntryTest::powerKeys()
{
    QFETCH(const QString, keys);
    const QVector<Unit> units = unitsOf(QStringLiteral("power"));
    const BaseUnitAdapter scale(units);
    NumericEntry config;
    config.value = -20.0;
    config.step = 5.0;
    NumberEntry entry(scale, config);
    const NumberEntry::Accepted accepted = play(entry, units, keys);
    QTEST(entry.quantityText(), "shown");
    QTEST(textOf(accepted), "accepted");
    QCOMPARE(entry.refusal(), QString());
}

// 5 ms, at least 1 ms.
void NumberEntryTest::timeKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refusal");
    const char* const mega = "A capital M stands for mega. Use s, ms, \u00b5s, ns or ps.";
    const char* const tooSmall = "The minimum is 1 ms.";
    QTest::newRow("m is ms") << "7m"
                             << "7 ms"
                             << "0.007"
                             << "";
    QTest::newRow("s is s") << "7s"
                            << "7 s"
                            << "7"
                            << "";
    QTest::newRow("u is a micro") << "7000u"
                                  << "7000 \u00b5s"
                                  << "0.007"
                                  << "";
    QTest::newRow("refused, then spelt out") << "7us"
                                             << "7 \u00b5s" << nothing << tooSmall;
    QTest::newRow("the value spelt out") << "us"
                                         << "5000 \u00b5s" << nothing << "";
    QTest::newRow("capital M") << "7M"
                               << "7 ms" << nothing << mega;
    QTest::newRow("capital M and s are no seconds") << "7Ms"
                                                    << "7 ms" << nothing << mega;
    QTest::newRow("backspace drops the letter") << "7M<Back>s"
                                                << "7 s"
                                                << "7"
                                                << "";
    QTest::newRow("a digit drops the letter") << "7M1s"
                                              << "71 s"
                                              << "71"
                                              << "";
}

void NumberEntryTest::timeKeys()
{
    QFETCH(const QString, keys);
    const QVector<Unit> units = Quantities::time();
    const BaseUnitAdapter scale(units);
    NumericEntry config;
    config.value = 0.005;
    config.minimum = 0.001;
    NumberEntry entry(scale, config);
    const NumberEntry::Accepted accepted = play(entry, units, keys);
    QTEST(entry.quantityText(), "shown");
    QTEST(textOf(accepted), "accepted");
    QTEST(entry.refusal(), "refusal");
}

// 12, a whole number from 4 to 24, without step.
void NumberEntryTest::plainKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("whole") << "15<Enter>"
                           << "15"
                           << "";
    QTest::newRow("whole with a point") << "15.0<Enter>"
                                        << "15"
                                        << "";
    QTest::newRow("half") << "15.5<Enter>"
                          << "16"
                          << "";
    QTest::newRow("less than half") << "15.49<Enter>"
                                    << "15"
                                    << "";
    QTest::newRow("beyond the maximum by a fraction") << "24.1<Enter>" << nothing << "The maximum is 24.";
    QTest::newRow("below the minimum by a fraction") << "3.9<Enter>" << nothing << "The minimum is 4.";
    QTest::newRow("letter") << "15k" << nothing << "This value has no unit. Type the number alone.";
    QTest::newRow("too small") << "3<Enter>" << nothing << "The minimum is 4.";
    QTest::newRow("pasted fraction") << "{15.5}<Enter>"
                                     << "16"
                                     << "";
    QTest::newRow("arrow without step") << "<Up>" << nothing << "This value has no step.";
}

void NumberEntryTest::plainKeys()
{
    QFETCH(const QString, keys);
    const BaseUnitAdapter scale({});
    NumericEntry config;
    config.value = 12.0;
    config.minimum = 4.0;
    config.maximum = 24.0;
    config.decimals = 0;
    config.integerOnly = true;
    NumberEntry entry(scale, config);
    QTEST(textOf(play(entry, {}, keys)), "accepted");
    QTEST(entry.refusal(), "refusal");
}

// 12.5 Hz, which was given, where whole Hz are entered in steps of 1 Hz.
void NumberEntryTest::wholeKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("untouched") << "<Enter>"
                               << "12.5"
                               << "";
    QTest::newRow("stepped") << "<Up><Enter>"
                             << "13.5"
                             << "";
    QTest::newRow("typed") << "1.5[Hz]"
                           << "2"
                           << "";
    QTest::newRow("typed below zero") << "-2.5[Hz]"
                                      << "-3"
                                      << "";
    QTest::newRow("typed and stepped") << ".5<Up><Enter>"
                                       << "2"
                                       << "";
    QTest::newRow("typed whole and stepped") << "5<Up><Enter>"
                                             << "6"
                                             << "";
    QTest::newRow("pasted") << "{1.5 Hz}<Enter>"
                            << "2"
                            << "";
    QTest::newRow("pasted and stepped") << "{1.5 Hz}<Down><Enter>"
                                        << "1"
                                        << "";
    QTest::newRow("pasted and re-expressed") << "{1500.5 Hz}[kHz]<Enter>"
                                             << "1501"
                                             << "";
}

void NumberEntryTest::wholeKeys()
{
    QFETCH(const QString, keys);
    const QVector<Unit> units = unitsOf(QStringLiteral("frequency"));
    const BaseUnitAdapter scale(units);
    NumericEntry config;
    config.value = 12.5;
    config.step = 1.0;
    config.integerOnly = true;
    NumberEntry entry(scale, config);
    QTEST(textOf(play(entry, units, keys)), "accepted");
    QTEST(entry.refusal(), "refusal");
}

QTEST_GUILESS_MAIN(NumberEntryTest)

#include "tst_number_entry.moc"
