#include "support/CommaLocale.h"
#include "utils/NumberText.h"

#include <QMap>
#include <QTest>
#include <charconv>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double smallestDouble = std::numeric_limits<double>::denorm_min();

const QMap<QString, int>& unitExponents()
{
    static const QMap<QString, int> exponents = {
        {QStringLiteral("GHz"), 9}, {QStringLiteral("MHz"), 6},      {QStringLiteral("kHz"), 3},
        {QStringLiteral("Hz"), 0},  {QStringLiteral("s"), 0},        {QStringLiteral("ms"), -3},
        {QStringLiteral("ns"), -9}, {QStringLiteral("\u00b5s"), -6}, {QStringLiteral("ps"), -12}};
    return exponents;
}

// count * 10^exponent as the nearest double, without the program's own help.
double scaled(const QByteArray& number, int exponent)
{
    const std::string text = number.toStdString() + 'e' + std::to_string(exponent);
    double value = notANumber;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

double scaled(qint64 count, int exponent)
{
    return scaled(QByteArray::number(count), exponent);
}

// A number text with its unit, taken apart.
struct Parts
{
    QByteArray number;
    QString unit;

    explicit Parts(const QString& text)
    {
        int end = 0;
        while (end < text.size() && (text.at(end).isDigit() || text.at(end) == QLatin1Char('.') ||
                                     text.at(end) == QLatin1Char('-'))) {
            ++end;
        }
        number = text.left(end).toLatin1();
        unit = text.mid(end).trimmed();
    }

    // In the base unit; the double nearest to the text.
    [[nodiscard]] double value() const { return scaled(number, unitExponents().value(unit)); }
};

// count / 10^places rounded to a whole number, halves away from zero, in whole numbers only.
qint64 roundedQuotient(qint64 count, int places)
{
    qint64 divisor = 1;
    for (int i = 0; i < places; ++i) {
        divisor *= 10;
    }
    const qint64 magnitude = (2 * qAbs(count) + divisor) / (2 * divisor);
    return count < 0 ? -magnitude : magnitude;
}

// A whole number of random size up to 15 digits, so that count * 10^n is a double of its own.
qint64 randomCount(std::mt19937_64& random)
{
    qint64 bound = 10;
    for (quint64 i = random() % 15; i > 0; --i) {
        bound *= 10;
    }
    const qint64 count = qint64(random() % quint64(bound));
    return random() % 2 == 0 ? count : -count;
}

} // namespace

class NumberTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void frequency_data();
    void frequency();
    void frequencyReadsBackRounded();
    void timeSpan_data();
    void timeSpan();
    void timeSpanReadsBackRounded();
    void magnitude_data();
    void magnitude();
    void number_data();
    void number();
    void numberReadsBackRounded();
    void textsDoNotDependOnTheLocale();
};

void NumberTextTest::frequency_data()
{
    QTest::addColumn<double>("hz");
    QTest::addColumn<bool>("trimZeros");
    QTest::addColumn<bool>("space");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, double hz, const char* expected) {
        QTest::newRow(name) << hz << true << false << QString::fromUtf8(expected);
    };
    row("1 GHz", 1e9, "1GHz");
    row("2.4 GHz", 2.4e9, "2.4GHz");
    row("kHz below its boundary, rounding down", 999.9994, "999.999Hz");
    row("kHz below its boundary, rounding up", 999.9995, "1kHz");
    row("kHz at its boundary", 1000, "1kHz");
    row("kHz above its boundary, rounding down", 1000.0004, "1kHz");
    row("kHz above its boundary, rounding up", 1000.0005, "1.000001kHz");
    row("MHz below its boundary, rounding down", 999999.9994, "999.999999kHz");
    row("MHz below its boundary, rounding up", 999999.9995, "1MHz");
    row("MHz at its boundary", 1e6, "1MHz");
    row("MHz above its boundary", 1000000.001, "1.000000001MHz");
    row("GHz below its boundary, rounding down", 999999999.9994, "999.999999999MHz");
    row("GHz below its boundary, rounding up", 999999999.9995, "1GHz");
    row("GHz above its boundary", 1000000000.001, "1.000000000001GHz");
    row("GHz takes all above", 1.5e12, "1500GHz");
    row("negative below a boundary, rounding down", -999.9994, "-999.999Hz");
    row("negative below a boundary, rounding up", -999.9995, "-1kHz");
    row("negative", -2.4e9, "-2.4GHz");
    row("zero", 0.0, "0Hz");
    row("negative zero", -0.0, "0Hz");
    row("below the resolution", 0.0004, "0Hz");
    row("below the resolution, negative", -0.0004, "0Hz");
    row("half the resolution", 0.0005, "0.001Hz");
    row("the resolution", 0.001, "0.001Hz");
    row("smallest double", smallestDouble, "0Hz");
    row("1e308 Hz", 1e308, QByteArray(QByteArray("1").leftJustified(300, '0') + "GHz").constData());
    row("not a number", notANumber, "--");
    row("infinity", infinity, "--");
    row("negative infinity", -infinity, "--");
    QTest::newRow("blank before the unit") << 1e9 << true << true << QStringLiteral("1 GHz");
    QTest::newRow("all decimals of a GHz") << 2.4e9 << false << false << QStringLiteral("2.400000000000GHz");
    QTest::newRow("all decimals of a MHz") << 1e6 << false << false << QStringLiteral("1.000000000MHz");
    QTest::newRow("all decimals of a kHz") << 1500.0 << false << true << QStringLiteral("1.500000 kHz");
    QTest::newRow("all decimals of a Hz") << 12.5 << false << false << QStringLiteral("12.500Hz");
    QTest::newRow("all decimals of zero") << 0.0 << false << false << QStringLiteral("0.000Hz");
    QTest::newRow("all decimals of less than zero") << -0.0004 << false << false << QStringLiteral("0.000Hz");
}

void NumberTextTest::frequency()
{
    QFETCH(double, hz);
    QFETCH(bool, trimZeros);
    QFETCH(bool, space);
    QTEST(Utils::normalizeFrequency(hz, trimZeros, space), "expected");
}

void NumberTextTest::frequencyReadsBackRounded()
{
    std::mt19937_64 random(20240601);
    for (int i = 0; i < 20000; ++i) {
        const qint64 count = randomCount(random);
        const int places = int(random() % 7); // beyond the millihertz
        const qint64 millihertz = roundedQuotient(count, places);
        const QString text = Utils::normalizeFrequency(scaled(count, -3 - places), i % 2 == 0, i % 3 == 0);
        const Parts parts(text);
        QVERIFY2(parts.value() == scaled(millihertz, -3), qPrintable(text));
        const double number = qAbs(parts.number.toDouble());
        QVERIFY2(number < 1000.0 || parts.unit == QLatin1String("GHz"), qPrintable(text));
        QVERIFY2(number >= 1.0 || parts.unit == QLatin1String("Hz"), qPrintable(text));
        QVERIFY2(millihertz != 0 || !parts.number.startsWith('-'), qPrintable(text));
    }
}

void NumberTextTest::timeSpan_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, double seconds, int decimals, const char* expected) {
        QTest::newRow(name) << seconds << decimals << QString::fromUtf8(expected);
    };
    row("2.5 ms", 0.0025, 3, "2.5ms");
    row("micro sign", 3e-6, 3, "3\u00b5s");
    row("1 ns", 1e-9, 3, "1ns");
    row("1 ps", 1e-12, 3, "1ps");
    row("part of a ps", 5e-13, 3, "0.5ps");
    row("zero", 0.0, 3, "0s");
    row("negative zero", -0.0, 3, "0s");
    row("rounds to zero", 4e-16, 3, "0s");
    row("rounds to the last decimal", 5e-16, 3, "0.001ps");
    row("s below its boundary, rounding down", 0.9999994, 3, "999.999ms");
    row("s below its boundary, rounding up", 0.9999995, 3, "1s");
    row("s at its boundary", 1.0, 3, "1s");
    row("ms below its boundary, rounding down", 0.0009999994, 3, "999.999\u00b5s");
    row("ms below its boundary, rounding up", 0.0009999995, 3, "1ms");
    row("\u00b5s below its boundary, rounding down", 9.999994e-7, 3, "999.999ns");
    row("\u00b5s below its boundary, rounding up", 9.999995e-7, 3, "1\u00b5s");
    row("ns below its boundary, rounding down", 9.999994e-10, 3, "999.999ps");
    row("ns below its boundary, rounding up", 9.999995e-10, 3, "1ns");
    row("s takes all above", 3600.0, 3, "3600s");
    row("no decimals", 0.0015, 0, "2ms");
    row("no decimals over a boundary", 0.9996, 0, "1s");
    row("negative number of decimals", 0.0015, -3, "2ms");
    row("negative", -0.0025, 3, "-2.5ms");
    row("smallest double", smallestDouble, 15, "0s");
    row("not a number", notANumber, 3, "--");
    row("infinity", infinity, 3, "--");
    row("negative infinity", -infinity, 3, "--");
}

void NumberTextTest::timeSpan()
{
    QFETCH(double, seconds);
    QFETCH(int, decimals);
    QTEST(Utils::normalizeTimeSpan(seconds, decimals), "expected");
}

void NumberTextTest::timeSpanReadsBackRounded()
{
    std::mt19937_64 random(20240602);
    const int unitDecimals[] = {0, 3, 6, 9, 12}; // s to ps
    for (int i = 0; i < 20000; ++i) {
        const qint64 count = randomCount(random);
        const int places = int(random() % 20); // count is in units of 10^-places s
        const int decimals = int(random() % 5);
        const QString text = Utils::normalizeTimeSpan(scaled(count, -places), decimals);
        const Parts parts(text);
        const double number = qAbs(parts.number.toDouble());
        QVERIFY2(number < 1000.0 || parts.unit == QLatin1String("s"), qPrintable(text));
        QVERIFY2(number >= 1.0 || count == 0 || parts.unit == QLatin1String("ps") ||
                     text == QLatin1String("0s"),
                 qPrintable(text));
        // The unit that the span itself is at least one of decides where it is rounded.
        int unit = 0;
        while (unit < 4 && qAbs(scaled(count, -places)) < scaled(1, -unitDecimals[unit])) {
            ++unit;
        }
        const int dropped = places - unitDecimals[unit] - decimals;
        const double expected = dropped <= 0   ? scaled(count, -places)
                                : dropped > 17 ? 0.0
                                               : scaled(roundedQuotient(count, dropped), dropped - places);
        QVERIFY2(parts.value() == expected, qPrintable(text));
    }
}

void NumberTextTest::magnitude_data()
{
    QTest::addColumn<double>("count");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, double count, int decimals, const char* expected) {
        QTest::newRow(name) << count << decimals << QString::fromLatin1(expected);
    };
    row("zero", 0, 2, "0");
    row("one", 1, 2, "1");
    row("below a thousand", 999, 2, "999");
    row("a thousand", 1000, 2, "1k");
    row("trimmed", 48000, 2, "48k");
    row("rounded up", 1235, 2, "1.24k");
    row("below a million", 999994, 2, "999.99k");
    row("rounded to a million", 999995, 2, "1M");
    row("millions", 1234567, 2, "1.23M");
    row("rounded to a billion", 999995000, 2, "1G");
    row("billions", 26.5e9, 2, "26.5G");
    row("the largest unit", 12345e12, 2, "12345T");
    row("no decimals", 1500, 0, "2k");
    row("negative", -48000, 2, "-48k");
    row("infinite", infinity, 2, "--");
    row("no number", notANumber, 2, "--");
}

void NumberTextTest::magnitude()
{
    QFETCH(double, count);
    QFETCH(int, decimals);
    QTEST(Utils::normalize1K(count, decimals), "expected");
}

void NumberTextTest::number_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("trimZeros");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, double value, int decimals, bool trimZeros, const char* expected) {
        QTest::newRow(name) << value << decimals << trimZeros << QString::fromUtf8(expected);
    };
    row("trimmed", -20.5, 3, true, "-20.5");
    row("trimmed to a whole number", -20.0, 3, true, "-20");
    row("whole number keeps its zeros", 100.0, 3, true, "100");
    row("not trimmed", -20.5, 3, false, "-20.500");
    row("half of the shortest decimal text goes up", 2.0005, 3, true, "2.001");
    row("half that the double itself lies below", 1.0005, 3, true, "1.001");
    row("half, negative", -1.0005, 3, true, "-1.001");
    row("just below half", 1.00049999, 3, true, "1");
    row("carry over all digits", 999.9996, 3, false, "1000.000");
    row("half to a whole number", 0.5, 0, true, "1");
    row("less than half to a whole number", 0.49, 0, true, "0");
    row("zero", 0.0, 2, false, "0.00");
    row("negative zero", -0.0, 2, true, "0");
    row("negative that rounds to zero", -0.001, 2, true, "0");
    row("negative that rounds to zero, not trimmed", -0.001, 2, false, "0.00");
    row("15 decimals", 0.1, 15, false, "0.100000000000000");
    row("more decimals than there are", 0.1, 99, false, "0.100000000000000");
    row("fewer decimals than there are", 1.5, -1, true, "2");
    row("smallest double", smallestDouble, 15, true, "0");
    row("1e308", 1e308, 1, false, QByteArray(QByteArray("1").leftJustified(309, '0') + ".0").constData());
    row("not a number", notANumber, 3, true, "--");
    row("infinity", infinity, 3, false, "--");
    row("negative infinity", -infinity, 3, true, "--");
}

void NumberTextTest::number()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(bool, trimZeros);
    QTEST(Utils::toString(value, decimals, trimZeros), "expected");
}

void NumberTextTest::numberReadsBackRounded()
{
    std::mt19937_64 random(20240603);
    for (int i = 0; i < 20000; ++i) {
        const qint64 count = randomCount(random);
        const int decimals = int(random() % 9);
        const int dropped = int(random() % 7);
        const QString text = Utils::toString(scaled(count, -decimals - dropped), decimals, i % 2 == 0);
        const qint64 kept = roundedQuotient(count, dropped);
        QVERIFY2(text.toDouble() == scaled(kept, -decimals), qPrintable(text));
        QVERIFY2(kept != 0 || !text.startsWith(QLatin1Char('-')), qPrintable(text));
        QVERIFY2(i % 2 == 1 || !text.contains(QLatin1Char('.')) || !text.endsWith(QLatin1Char('0')),
                 qPrintable(text));
        const int shown = text.size() - 1 - text.indexOf(QLatin1Char('.'));
        QVERIFY2(i % 2 == 0 || (decimals == 0 && !text.contains(QLatin1Char('.'))) || shown == decimals,
                 qPrintable(text));
    }
}

void NumberTextTest::textsDoNotDependOnTheLocale()
{
    const CommaLocale comma;
    QVERIFY(CommaLocale::isActive());
    QCOMPARE(Utils::normalizeFrequency(2.4125e9, true, false), QStringLiteral("2.4125GHz"));
    QCOMPARE(Utils::normalizeFrequency(1.5e13, false, true), QStringLiteral("15000.000000000000 GHz"));
    QCOMPARE(Utils::normalizeTimeSpan(0.0025, 3), QStringLiteral("2.5ms"));
    QCOMPARE(Utils::toString(1234567.25, 2, true), QStringLiteral("1234567.25"));
}

QTEST_GUILESS_MAIN(NumberTextTest)
#include "tst_number_text.moc"
