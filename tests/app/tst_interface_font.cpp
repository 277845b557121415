// The faces that are laid beside the program, on a machine that has no other: CMakeLists.txt
// names fontconfig an empty folder.

#include "app/HelperApplication.h"
#include "app/InterfaceFont.h"
#include "controls/LabelButton.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QLabel>
#include <QMap>
#include <QPainterPath>
#include <QRawFont>
#include <QRegularExpression>
#include <QSet>
#include <QStyle>
#include <QTest>
#include <QTextLayout>
#include <algorithm>

namespace {

constexpr int size = 32; // pixels
const QString configuration = QStringLiteral(CONFIGURATION_DIR);

// Read from what others have copied, and never shown.
constexpr uint arabicThousandsMark = 0x66c;

// Before the application has met the desktop.
QString chosenStyle;

QFont unhinted(QFont font)
{
    font.setPixelSize(size);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Every character of a text once, those written as "\u00b5" included, and what cannot be printed left out.
QVector<uint> charactersOf(const QString& text)
{
    QSet<uint> found;
    const auto codes = text.toUcs4();
    for (const uint code : codes)
        if (QChar::isPrint(code))
            found.insert(code);
    static const QRegularExpression escape(QStringLiteral("\\\\u([0-9a-fA-F]{4})"));
    for (auto match = escape.globalMatch(text); match.hasNext();)
        found.insert(match.next().captured(1).toUInt(nullptr, 16));
    QVector<uint> sorted(found.cbegin(), found.cend());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

QString textsBelow(const QString& folder, const QStringList& names)
{
    QString texts;
    for (QDirIterator files(folder, names, QDir::Files, QDirIterator::Subdirectories); files.hasNext();)
        texts += readText(files.next());
    return texts;
}

} // namespace

class InterfaceFontTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theMachineHasNoOther();
    void everyFamilyHasItsFiles();
    void widgetsTakeIt();
    void styleSheetsNameNoOther_data();
    void styleSheetsNameNoOther();
    void facesByLanguage_data();
    void facesByLanguage();
    void facesByWeight_data();
    void facesByWeight();
    void emphasis_data();
    void emphasis();
    void noFileIsIdle();
    void digitsAreOfOneWidth();
    void everyCharacterIsThere_data();
    void everyCharacterIsThere();
    void theArrowsNeedNoOther();
    void theDesktopHasNoSay();
    void iconsHaveTheScreensResolution();

private:
    // The file whose outline a character of the text is drawn with; empty for none of ours.
    [[nodiscard]] QString fileOf(const QString& text, int position, const QFont& font) const;
    [[nodiscard]] bool isBlank(uint code) const;

    QMap<QString, QRawFont> m_files;
};

void InterfaceFontTest::initTestCase()
{
    for (QDirIterator files(QStringLiteral(FONTS_DIR), {QStringLiteral("*.ttf")}, QDir::Files);
         files.hasNext();) {
        const QString path = files.next();
        QVERIFY2(QFontDatabase::addApplicationFont(path) >= 0, qPrintable(path));
        m_files.insert(files.fileName(), QRawFont(path, size, QFont::PreferNoHinting));
    }
    QVERIFY(!m_files.isEmpty());
}

QString InterfaceFontTest::fileOf(const QString& text, int position, const QFont& font) const
{
    QTextLayout layout(text, unhinted(font));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const bool isPair = text.at(position).isHighSurrogate();
    const QString character = text.mid(position, isPair ? 2 : 1);
    const QList<QGlyphRun> runs = layout.glyphRuns(position, character.size());
    if (runs.size() != 1 || runs.first().glyphIndexes().isEmpty())
        return {};
    const QPainterPath shown = runs.first().rawFont().pathForGlyph(runs.first().glyphIndexes().first());
    for (auto file = m_files.cbegin(); file != m_files.cend(); ++file) {
        const QVector<quint32> glyphs = file->glyphIndexesForString(character);
        if (!glyphs.isEmpty() && glyphs.first() != 0 && file->pathForGlyph(glyphs.first()) == shown)
            return file.key();
    }
    return {};
}

bool InterfaceFontTest::isBlank(uint code) const
{
    return QChar::isSpace(code) &&
           std::any_of(m_files.cbegin(), m_files.cend(),
                       [code](const QRawFont& file) { return file.supportsCharacter(code); });
}

void InterfaceFontTest::theMachineHasNoOther()
{
    const QStringList families = QFontDatabase().families();
    for (const QString& family : families) {
        const bool isName =
            QStringList{QStringLiteral("Sans Serif"), QStringLiteral("Serif"), QStringLiteral("Monospace")}
                .contains(family); // fontconfig's, with no file behind it
        const bool ours = isName ||
                          family.startsWith(interfaceFamily()) || // its weights count as families too
                          fallbackFamilies(QString()).contains(family);
        QVERIFY2(ours, qPrintable(family));
    }
}

void InterfaceFontTest::everyFamilyHasItsFiles()
{
    for (const char* locale : {"", "ja", "zh_CN", "ko"}) {
        const QStringList fallbacks = fallbackFamilies(QLatin1String(locale));
        for (const QString& family : fallbacks + QStringList(interfaceFamily()))
            QVERIFY2(QFontDatabase().hasFamily(family), qPrintable(family));
    }
}

void InterfaceFontTest::widgetsTakeIt()
{
    useInterfaceFont(QStringLiteral("en"));
    for (const char* widget : {"QWidget", "QLabel", "QMenu", "QMessageBox", "QTipLabel", "QHeaderView"}) {
        const QFont font = QApplication::font(widget);
        QCOMPARE(font.family(), interfaceFamily());
        QVERIFY(font.pixelSize() > 0); // whatever the screen's resolution
    }
}

void InterfaceFontTest::styleSheetsNameNoOther_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("light") << "theme_light.css";
    QTest::newRow("dark") << "theme.css";
}

void InterfaceFontTest::styleSheetsNameNoOther()
{
    QFETCH(const QString, file);
    const QString sheet = readText(configuration + QLatin1Char('/') + file);
    QVERIFY(!sheet.isEmpty());
    QVERIFY(!sheet.contains(QLatin1String("font-family")));
}

void InterfaceFontTest::facesByLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("file");

    const QString roboto = QStringLiteral("Roboto-Regular.ttf");
    const QString chinese = QStringLiteral("DroidSansFallbackFull.ttf");
    const QString japanese = QStringLiteral("MTLc3m.ttf");
    const QString korean = QStringLiteral("NanumBarunGothic.ttf");
    const QString han = QStringLiteral("\u76f4\u9aa8 2.4 GHz"); // of two forms each
    QTest::newRow("Han for the Japanese") << "ja" << han << 0 << japanese;
    QTest::newRow("another") << "ja" << han << 1 << japanese;
    QTest::newRow("with a country") << "ja_JP" << han << 0 << japanese;
    QTest::newRow("Han for the Chinese") << "zh_CN" << han << 0 << chinese;
    QTest::newRow("Han in Taiwan") << "zh_TW" << han << 1 << chinese;
    QTest::newRow("Han for the Korean") << "ko" << han << 0 << chinese;
    QTest::newRow("Han for the English") << "en" << han << 0 << chinese;
    QTest::newRow("Han in no language") << "Localization" << han << 0 << chinese;
    QTest::newRow("Han that the Japanese do not know") << "ja" << QStringLiteral("\u8c03") << 0 << chinese;
    for (const char* locale : {"ja", "zh_CN", "ko", "en"}) {
        const auto row = [locale](const char* what) -> QTestData& {
            return QTest::addRow("%s in %s", what, locale);
        };
        row("digit after Han") << locale << han << 3 << roboto;
        row("letter") << locale << han << 7 << roboto;
        row("Cyrillic") << locale << QStringLiteral("\u0426") << 0 << roboto;
        row("Greek") << locale << QStringLiteral("\u03a9") << 0 << roboto;
        row("digit after Hangul") << locale << QStringLiteral("\uc8fc 7") << 2 << roboto;
        row("Hangul") << locale << QStringLiteral("\uc8fc\ud30c\uc218") << 1 << korean;
    }
    QTest::newRow("Katakana") << "ja" << QStringLiteral("\u30ac") << 0 << japanese;
    QTest::newRow("digit after Katakana") << "ja" << QStringLiteral("\u30ac 1") << 2 << roboto;
}

void InterfaceFontTest::facesByLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    useInterfaceFont(locale);
    QTEST(fileOf(text, position, QApplication::font()), "file");
}

void InterfaceFontTest::facesByWeight_data()
{
    QTest::addColumn<QString>("declaration");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("file");
    const QString latin = QStringLiteral("A");
    const QString hangul = QStringLiteral("\uc8fc");
    QTest::newRow("usual") << "" << latin << "Roboto-Regular.ttf";
    QTest::newRow("500") << "font-weight: 500" << latin << "Roboto-Medium.ttf";
    QTest::newRow("600") << "font-weight: 600" << latin << "Roboto-Bold.ttf";
    QTest::newRow("bold") << "font-weight: bold" << latin << "Roboto-Bold.ttf";
    QTest::newRow("Hangul") << "" << hangul << "NanumBarunGothic.ttf";
    QTest::newRow("bold Hangul") << "font-weight: bold" << hangul << "NanumBarunGothicBold.ttf";
}

void InterfaceFontTest::facesByWeight()
{
    QFETCH(const QString, declaration);
    QFETCH(const QString, text);
    useInterfaceFont(QStringLiteral("en"));
    QLabel label;
    label.setStyleSheet(declaration);
    label.ensurePolished();
    QTEST(fileOf(text, 0, label.font()), "file");
}

void InterfaceFontTest::emphasis_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("file");
    const QString korean = QStringLiteral("253 \uc0d8\ud50c");
    QTest::newRow("English") << "en" << QStringLiteral("253 samples") << 0 << "Roboto-Medium.ttf";
    QTest::newRow("Japanese") << "ja" << QStringLiteral("253 \u30b5\u30f3") << 0 << "Roboto-Bold.ttf";
    QTest::newRow("Chinese") << "zh_CN" << QStringLiteral("253 \u91c7\u6837") << 0 << "Roboto-Bold.ttf";
    QTest::newRow("Korean") << "ko" << korean << 0 << "Roboto-Bold.ttf";
    QTest::newRow("Hangul") << "ko" << korean << 4 << "NanumBarunGothicBold.ttf";
}

// A value's number and unit are of one weight, in every language.
void InterfaceFontTest::emphasis()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, value);
    QFETCH(const int, position);
    useInterfaceFont(locale);
    const LabelButton button;
    QTEST(fileOf(value, position, button.findChild<QLabel*>(QStringLiteral("infoLabel"))->font()), "file");
}

void InterfaceFontTest::noFileIsIdle()
{
    QSet<QString> used;
    QFont bold = QApplication::font();
    bold.setWeight(QFont::Bold);
    QFont medium = bold;
    medium.setWeight(QFont::DemiBold);
    for (const char* locale : {"ja", "zh_CN"}) {
        useInterfaceFont(QLatin1String(locale));
        for (const QFont& font : {QApplication::font(), medium, bold})
            for (const QString& text :
                 {QStringLiteral("A"), QStringLiteral("\u76f4"), QStringLiteral("\uc8fc")})
                used.insert(fileOf(text, 0, font));
    }
    for (auto file = m_files.cbegin(); file != m_files.cend(); ++file)
        QVERIFY2(used.contains(file.key()), qPrintable(file.key()));
}

void InterfaceFontTest::digitsAreOfOneWidth()
{
    for (auto file = m_files.cbegin(); file != m_files.cend(); ++file) {
        if (!file.key().startsWith(interfaceFamily()))
            continue;
        const QVector<QPointF> advances =
            file->advancesForGlyphIndexes(file->glyphIndexesForString(QStringLiteral("0123456789")));
        for (const QPointF& advance : advances)
            QVERIFY2(advance == advances.first(), qPrintable(file.key()));
    }
}

void InterfaceFontTest::everyCharacterIsThere_data()
{
    QTest::addColumn<QString>("texts");
    const QStringList sources{QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.ui")};
    QTest::newRow("printable ASCII") << QString::fromLatin1(QByteArray::fromHex("2021")) +
                                            QStringLiteral("\"#$%&'()*+,-./0123456789:;<=>?@[\\]^_`{|}~");
    QTest::newRow("what the program says") << textsBelow(QStringLiteral(SOURCE_DIR), sources);
    QTest::newRow("units and signs of the field") << QStringLiteral(
        "\u00b5\u03bc\u03a9\u2126\u00b0\u221e\u00b1\u00d7\u00f7\u00b7\u2026\u2013\u2014\u2212\u2030\u2264"
        "\u2265\u2248\u2260\u221a\u00b2\u00b3\u0394\u03c0\u03c6\u20ac");
    QTest::newRow("quotation marks of ten languages") << QStringLiteral(
        "\u201c\u201d\u201e\u2018\u2019\u201a\u00ab\u00bb\u2039\u203a\u300c\u300d\u300e\u300f\u3001"
        "\u3002\uff0c\uff1a\uff1b\uff01\uff1f\uff08\uff09\u00bf\u00a1\u00a0\u202f");
    QTest::newRow("translations") << readText(configuration + QStringLiteral("/Language.tsv"));
}

void InterfaceFontTest::everyCharacterIsThere()
{
    QFETCH(const QString, texts);
    const QVector<uint> characters = charactersOf(texts);
    QVERIFY(characters.size() > 10);
    for (const char* locale : {"en", "ja", "zh_CN", "ko"}) {
        useInterfaceFont(QLatin1String(locale));
        for (const uint code : characters) {
            const bool found = isBlank(code) || code == arabicThousandsMark ||
                               !fileOf(QString::fromUcs4(&code, 1), 0, QApplication::font()).isEmpty();
            QVERIFY2(found,
                     qPrintable(QStringLiteral("U+%1 in %2").arg(code, 4, 16).arg(QLatin1String(locale))));
        }
    }
}

void InterfaceFontTest::theArrowsNeedNoOther()
{
    useInterfaceFont(QStringLiteral("en"));
    QLabel label;
    label.setStyleSheet(QStringLiteral("font-family: \"Segoe UI Symbol\"; font-weight: 700"));
    label.ensurePolished();
    for (const char* arrow : {"v", "^"})
        QCOMPARE(fileOf(QLatin1String(arrow), 0, label.font()), QStringLiteral("Roboto-Bold.ttf"));
}

void InterfaceFontTest::theDesktopHasNoSay()
{
    QCOMPARE(chosenStyle, QStringLiteral("fusion"));
    QCOMPARE(QApplication::style()->objectName(), QStringLiteral("fusion"));
}

void InterfaceFontTest::iconsHaveTheScreensResolution()
{
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
}

int main(int argc, char* argv[])
{
    HelperApplication::prepareEnvironment();
    chosenStyle = QApplication::style()->objectName();
    QApplication application(argc, argv);
    InterfaceFontTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_interface_font.moc"
