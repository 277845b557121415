#include "support/CommaLocale.h"
#include "utils/SizeText.h"

#include <QTest>
#include <cmath>
#include <limits>
#include <random>

class SizeTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void size_data();
    void size();
    void isIndependentOfTheLocale();
    void isAlwaysWithinHalfAStep();
};

void SizeTextTest::size_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](qint64 bytes, const char* text) {
        QTest::newRow(text) << bytes << QString::fromLatin1(text);
    };
    row(0, "0 B");
    row(1, "1 B");
    row(999, "999 B");
    row(1000, "1 kB");
    row(1049, "1 kB");
    row(1050, "1.1 kB");
    row(1536, "1.5 kB");
    row(999'949, "999.9 kB");
    row(999'950, "1 MB");
    row(1'500'000, "1.5 MB");
    row(999'949'999, "999.9 MB");
    row(999'950'000, "1 GB");
    row(120'000'000'000, "120 GB");
    row(2'000'000'000'000, "2 TB");
    row(3'100'000'000'000'000, "3.1 PB");
    row(std::numeric_limits<qint64>::max(), "9.2 EB");
    QTest::newRow("below zero") << qint64(-1) << QStringLiteral("0 B");
    QTest::newRow("far below zero") << std::numeric_limits<qint64>::min() << QStringLiteral("0 B");
}

void SizeTextTest::size()
{
    QFETCH(const qint64, bytes);
    QTEST(Utils::humanReadableSize(bytes), "text");
}

void SizeTextTest::isIndependentOfTheLocale()
{
    const CommaLocale comma;
    QCOMPARE(Utils::humanReadableSize(1'234'567), QStringLiteral("1.2 MB"));
}

// Read back, the text is within half of its last decimal of the size, and its number is below 1000.
void SizeTextTest::isAlwaysWithinHalfAStep()
{
    const QStringList units = {QStringLiteral("B"),  QStringLiteral("kB"), QStringLiteral("MB"),
                               QStringLiteral("GB"), QStringLiteral("TB"), QStringLiteral("PB"),
                               QStringLiteral("EB")};
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 20'000; ++i) {
        const auto bytes = qint64(random() >> (1 + random() % 63));
        const QString text = Utils::humanReadableSize(bytes);
        const QStringList parts = text.split(QLatin1Char(' '));
        QCOMPARE(parts.size(), 2);
        const int unit = units.indexOf(parts.last());
        QVERIFY2(unit >= 0, qPrintable(text));
        const double number = parts.first().toDouble();
        QVERIFY2(number < 1000 && (number >= 1 || unit == 0), qPrintable(text));
        const double factor = std::pow(1000.0, unit);
        const double halfStep = unit == 0 ? 0 : 0.05 * factor;
        QVERIFY2(std::fabs(number * factor - double(bytes)) <= halfStep * (1 + 1e-9),
                 qPrintable(text + QLatin1String(" of ") + QString::number(bytes)));
    }
}

QTEST_APPLESS_MAIN(SizeTextTest)

#include "tst_size_text.moc"
