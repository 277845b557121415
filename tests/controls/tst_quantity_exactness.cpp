#include "controls/Quantities.h"
#include "controls/QuantityText.h"
#include "support/CommaLocale.h"

#include <QElapsedTimer>
#include <QTest>
#include <cmath>
#include <cstring>
#include <random>

using Controls::formatQuantity;
using Controls::ParsedQuantity;
using Controls::parseQuantity;
using Controls::Unit;
using Status = ParsedQuantity::Status;

namespace {

constexpr int noUnit = -1;

const char* const locales[] = {"C",     "en_US", "en_GB", "en_IN", "de_DE", "de_CH", "de_AT", "fr_FR",
                               "fr_CH", "it_IT", "es_ES", "es_MX", "pt_BR", "pt_PT", "nl_NL", "sv_SE",
                               "nb_NO", "da_DK", "fi_FI", "pl_PL", "cs_CZ", "ru_RU", "uk_UA", "bg_BG",
                               "tr_TR", "el_GR", "he_IL", "ar_EG", "ar_SA", "fa_IR", "ur_PK", "hi_IN",
                               "mr_IN", "bn_BD", "ne_NP", "my_MM", "th_TH", "ja_JP", "zh_CN", "ko_KR"};

const double shownValues[] = {0,    1,      -1,       2.4,     -20,          0.412,      999.999,  1234,
                              1000, 1234.5, 1234.567, -12.345, -1234567.891, 12345678.9, 999999.5, 100000};

// One point followed by the last three digits: a group in some countries, decimals in this program.
bool hasLonePointBeforeThreeDigits(const QString& text)
{
    return text.count(QLatin1Char('.')) == 1 && text.indexOf(QLatin1Char('.')) == text.size() - 4;
}

// Restores the default locale.
class DefaultLocale
{
public:
    explicit DefaultLocale(const QLocale& locale) { QLocale::setDefault(locale); }
    ~DefaultLocale() { QLocale::setDefault(m_before); }
    Q_DISABLE_COPY_MOVE(DefaultLocale)

private:
    QLocale m_before;
};

// Any finite double, all magnitudes alike.
double randomDouble(std::mt19937_64& random)
{
    for (;;) {
        const quint64 bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) {
            return value;
        }
    }
}

QByteArray randomDigits(std::mt19937_64& random, int count)
{
    QByteArray digits;
    for (int i = 0; i < count; ++i) {
        digits.append(char('0' + random() % 10));
    }
    return digits;
}

} // namespace

// How exactly numbers are read and written, whatever the locale and the size of the text.
class QuantityExactnessTest final : public QObject
{
    Q_OBJECT

private slots:
    void readsTheNearestDouble();
    void fifteenDigitsArriveAsTheyAre();
    void exactExpansionOfADouble();
    void localeTexts_data();
    void localeTexts();
    void commaLocaleOfTheCLibrary();
    void longTexts_data();
    void longTexts();
    void formatted_data();
    void formatted();
    void formattedReadsBack_data();
    void formattedReadsBack();
};

void QuantityExactnessTest::readsTheNearestDouble()
{
    std::mt19937_64 random(1);
    const QVector<Unit> allUnits[] = {Quantities::frequency(), Quantities::time()};
    for (int i = 0; i < 20000; ++i) {
        const QVector<Unit>& units = allUnits[i % 2];
        const Unit& unit = units.at(int(random() % quint64(units.size())));
        const QByteArray number =
            randomDigits(random, 1 + int(random() % 25)) + '.' + randomDigits(random, int(random() % 25));
        const int exponent = int(random() % 61) - 30;
        const QString text =
            QString::fromLatin1(number) + QLatin1Char('e') + QString::number(exponent) + unit.text;
        const ParsedQuantity parsed = parseQuantity(text, units, noUnit);
        QVERIFY2(parsed.status == Status::Value, qPrintable(text));
        QVERIFY2(parsed.value == Quantities::nearest(number.toStdString(), exponent + unit.exponent),
                 qPrintable(text));
    }
}

void QuantityExactnessTest::fifteenDigitsArriveAsTheyAre()
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 20000; ++i) {
        const qint64 hertz = qint64(random() % 1000000000000000ULL);
        const QString digits = QString::number(hertz).rightJustified(10, QLatin1Char('0'));
        const QString text =
            digits.left(digits.size() - 9) + QLatin1Char('.') + digits.right(9) + QLatin1String(" GHz");
        const double value = parseQuantity(text, Quantities::frequency(), noUnit).value;
        QVERIFY2(qint64(value) == hertz && value == std::floor(value), qPrintable(text));
    }
}

void QuantityExactnessTest::exactExpansionOfADouble()
{
    // The longest text that a double can have with all its digits.
    const double value = std::nextafter(std::numeric_limits<double>::min(), 0.0);
    char text[1200];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 1074);
    const ParsedQuantity parsed = parseQuantity(QString::fromLatin1(text, int(end.ptr - text)), {}, noUnit);
    QVERIFY(parsed.status == Status::Value);
    QVERIFY(parsed.value == value);
}

void QuantityExactnessTest::localeTexts_data()
{
    QTest::addColumn<QLocale>("locale");
    for (const char* name : locales) {
        QTest::newRow(name) << QLocale(QString::fromLatin1(name));
    }
}

// A number as another program writes it is read as that number or refused as ambiguous. The one exception is
// a whole number of four to six digits grouped with a point, "1.234": it looks like the program's own 1.234.
void QuantityExactnessTest::localeTexts()
{
    QFETCH(QLocale, locale);
    const DefaultLocale defaultLocale(locale);
    for (const bool grouped : {true, false}) {
        locale.setNumberOptions(grouped ? QLocale::DefaultNumberOptions : QLocale::OmitGroupSeparator);
        for (const double value : shownValues) {
            for (int decimals = 0; decimals <= 4; ++decimals) {
                const QString text = locale.toString(value, 'f', decimals);
                const ParsedQuantity parsed =
                    parseQuantity(text + QLatin1String(" Hz"), Quantities::frequency(), 0);
                if (parsed.status != Status::Value) {
                    QVERIFY2(parsed.refusal.startsWith(QLatin1String("This could mean ")), qPrintable(text));
                    QVERIFY2(text.count(QLatin1Char(',')) == 1, qPrintable(text));
                    continue;
                }
                const double shown = QByteArray::number(value, 'f', decimals).toDouble();
                const bool groupedByOnePoint = decimals == 0 && hasLonePointBeforeThreeDigits(text);
                QVERIFY2(parsed.value == (groupedByOnePoint ? shown / 1000 : shown), qPrintable(text));
            }
        }
    }
}

void QuantityExactnessTest::commaLocaleOfTheCLibrary()
{
    const CommaLocale comma;
    QVERIFY(CommaLocale::isActive());
    QCOMPARE(parseQuantity(QStringLiteral("2.4125 GHz"), Quantities::frequency(), noUnit).value, 2.4125e9);
    QCOMPARE(parseQuantity(QStringLiteral("2,4125 GHz"), Quantities::frequency(), noUnit).value, 2.4125e9);
    QCOMPARE(formatQuantity(2.4125e9, Quantities::frequency().first()), QStringLiteral("2.4125"));
    QCOMPARE(formatQuantity(1.5e300, Quantities::frequency().last()), QStringLiteral("1.5e300"));
}

void QuantityExactnessTest::longTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("blank");

    constexpr int length = 10 * 1024 * 1024;
    QTest::newRow("digits") << QString(length, QLatin1Char('1')) << false;
    QTest::newRow("zeros") << QString(length, QLatin1Char('0')) << false;
    QTest::newRow("commas") << QString(length, QLatin1Char(',')) << false;
    QTest::newRow("letters") << QString(length, QLatin1Char('x')) << false;
    QTest::newRow("groups") << QString(QLatin1String("1") + QStringLiteral(",234").repeated(length / 4))
                            << false;
    QTest::newRow("exponent") << QString(QLatin1String("1e") + QString(length, QLatin1Char('9'))) << false;
    QTest::newRow("blanks inside") << QString(QLatin1Char('5') + QString(length, QLatin1Char(' ')) +
                                              QLatin1String("Hz"))
                                   << false;
    QTest::newRow("blanks only") << QString(length, QLatin1Char(' ')) << true;
    QTest::newRow("one more than is read") << QString(1201, QLatin1Char('1')) << false;
}

void QuantityExactnessTest::longTexts()
{
    QFETCH(QString, text);
    QFETCH(bool, blank);
    QElapsedTimer timer;
    timer.start();
    const ParsedQuantity parsed = parseQuantity(text, Quantities::frequency(), noUnit);
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(parsed.status == (blank ? Status::Incomplete : Status::Refused));
    QCOMPARE(parsed.refusal, blank
                                 ? QStringLiteral("Type a number, such as 2.4 or -20.")
                                 : QStringLiteral("This text is too long for a number. Type fewer digits."));
}

void QuantityExactnessTest::formatted_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("exponent");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, double value, int exponent, const char* expected) {
        QTest::newRow(name) << value << exponent << QString::fromLatin1(expected);
    };
    row("2.4 GHz in GHz", 2.4e9, 9, "2.4");
    row("2.4 GHz in MHz", 2.4e9, 6, "2400");
    row("2.4 GHz in Hz", 2.4e9, 0, "2400000000");
    row("1 Hz in GHz", 1.0, 9, "0.000000001");
    row("1 mHz above 1 GHz", 1000000000.001, 9, "1.000000000001");
    row("3 µs in s", 3e-6, 0, "0.000003");
    row("3 µs in ps", 3e-6, -12, "3000000");
    row("a tenth", 0.1, 0, "0.1");
    row("negative", -20.5, 0, "-20.5");
    row("zero", 0.0, 9, "0");
    row("negative zero", -0.0, 0, "0");
    row("24 characters", 1e23, 0, "100000000000000000000000");
    row("25 characters", 1e24, 0, "1e24");
    row("24 characters with the sign", -1e22, 0, "-10000000000000000000000");
    row("25 characters with the sign", -1e23, 0, "-1e23");
    row("24 characters below one", 1e-22, 0, "0.0000000000000000000001");
    row("25 characters below one", 1e-23, 0, "1e-23");
    row("digits and exponent", 1.25e300, 9, "1.25e291");
    row("smallest double", std::numeric_limits<double>::denorm_min(), 0, "5e-324");
    row("smallest double in GHz", std::numeric_limits<double>::denorm_min(), 9, "5e-333");
    row("largest double", std::numeric_limits<double>::max(), -12, "1.7976931348623157e320");
    row("not a number", std::numeric_limits<double>::quiet_NaN(), 0, "");
    row("infinity", std::numeric_limits<double>::infinity(), 0, "");
}

void QuantityExactnessTest::formatted()
{
    QFETCH(double, value);
    QFETCH(int, exponent);
    QTEST(formatQuantity(value, Unit{QStringLiteral("x"), exponent}), "expected");
}

void QuantityExactnessTest::formattedReadsBack_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("time");
    for (int i = 0; i < Quantities::frequency().size(); ++i) {
        QTest::newRow(qPrintable(Quantities::frequency().at(i).text)) << i << false;
    }
    for (int i = 0; i < Quantities::time().size(); ++i) {
        QTest::newRow(qPrintable(Quantities::time().at(i).text)) << i << true;
    }
}

void QuantityExactnessTest::formattedReadsBack()
{
    QFETCH(int, unit);
    QFETCH(bool, time);
    const QVector<Unit> units = time ? Quantities::time() : Quantities::frequency();
    std::mt19937_64 random(3);
    for (int i = 0; i < 10000; ++i) {
        // Half of them in the range of the product, half anywhere.
        const double value =
            i % 2 == 0 ? randomDouble(random) : std::ldexp(double(random() >> 11), -20 - int(random() % 70));
        const QString text = formatQuantity(value, units.at(unit));
        const ParsedQuantity typed = parseQuantity(text, units, unit);
        const ParsedQuantity pasted = parseQuantity(text + units.at(unit).text, units, noUnit);
        QVERIFY2(typed.status == Status::Value && typed.value == value, qPrintable(text));
        QVERIFY2(pasted.status == Status::Value && pasted.value == value, qPrintable(text));
        QCOMPARE(pasted.unitIndex, unit);
        QVERIFY2(text.size() <= 24 || text.contains(QLatin1Char('e')), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(QuantityExactnessTest)
#include "tst_quantity_exactness.moc"
