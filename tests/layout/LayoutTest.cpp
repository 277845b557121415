#include "layout/LayoutTest.h"

#include "app/HelperApplication.h"
#include "gallery/GalleryItems.h"
#include "gallery/Installation.h"
#include "gallery/Screens.h"
#include "layout/LayoutCheck.h"
#include "layout/PaintedTexts.h"
#include "modeditors/ModEditorFactory.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QApplication>
#include <QDebug>
#include <QLoggingCategory>
#include <QTest>
#include <map>

namespace {

// Where everything of a screen stands and what is written there, one line each.
using Geometry = QStringList;

Geometry geometryOf(QWidget* shown)
{
    QVector<QWidget*> widgets = {shown};
    widgets += shown->findChildren<QWidget*>().toVector();
    Geometry lines;
    for (QWidget* widget : qAsConst(widgets)) {
        if (!widget->isVisible() || widget->window() != shown->window())
            continue;
        const QRect place(widget->mapTo(shown, QPoint(0, 0)), widget->size());
        lines.append(QStringLiteral("%1 %2,%3 %4x%5")
                         .arg(widget->objectName())
                         .arg(place.x())
                         .arg(place.y())
                         .arg(place.width())
                         .arg(place.height()));
        const QVector<PaintedText> texts = paintedTexts(widget);
        for (const PaintedText& text : texts) {
            lines.append(QStringLiteral("  %1 %2,%3 %4x%5")
                             .arg(text.text)
                             .arg(text.ink.x())
                             .arg(text.ink.y())
                             .arg(text.ink.width())
                             .arg(text.ink.height()));
        }
    }
    return lines;
}

std::map<QString, Geometry> geometryOfAll(bool light)
{
    std::map<QString, Geometry> all;
    if (Installation::setTheme(light))
        Screens([&all](const QString& name, QWidget* shown) {
            all.emplace(name, geometryOf(shown));
        }).visit();
    return all;
}

// The first line that differs, for the report.
QString difference(const Geometry& left, const Geometry& right)
{
    for (int i = 0; i < std::min(left.size(), right.size()); ++i) {
        if (left.at(i) != right.at(i))
            return left.at(i) + QStringLiteral(" | ") + right.at(i);
    }
    return QStringLiteral("%1 and %2 lines").arg(left.size()).arg(right.size());
}

// Where one language says it for all: the usual texts, and longer ones than any has.
void addProofLanguages()
{
    QTest::addColumn<QString>("language");
    for (const QString& language : {QStringLiteral("English"), Installation::doubledLanguage})
        QTest::newRow(qPrintable(language)) << language;
}

} // namespace

LayoutTest::LayoutTest(const char* scale)
    : m_scale(scale)
{}

LayoutTest::~LayoutTest() = default;

void LayoutTest::initTestCase()
{
    QVERIFY(Installation::prepare());
}

void LayoutTest::everyEditorIsAmongTheScreens()
{
    QStringList kinds;
    for (const GalleryItem& item : galleryItems()) {
        const QString kind = QString::fromLatin1(item.kind);
        const std::unique_ptr<RemoteModEditor> editor(createModEditor(kind, nullptr));
        if (editor && !kinds.contains(kind))
            kinds.append(kind);
    }
    QCOMPARE(kinds.size(), 13);
}

void LayoutTest::screens_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("light");
    // Geometry is the same in both themes, as themesDifferInColoursAlone holds in the longest texts; every
    // language is walked in both at the scale between, where most pixels are rounded.
    const bool isBetween = m_scale == QByteArray("1.5");
    for (const QString& language : Installation::languages()) {
        QTest::addRow("%s, light", qPrintable(language)) << language << true;
        if (isBetween)
            QTest::addRow("%s, dark", qPrintable(language)) << language << false;
    }
}

void LayoutTest::screens()
{
    QFETCH(const QString, language);
    QFETCH(const bool, light);
    check(language, light, &Screens::visit);
}

void LayoutTest::corners_data()
{
    addProofLanguages();
}

void LayoutTest::corners()
{
    QFETCH(const QString, language);
    check(language, true, &Screens::visitCorners);
}

void LayoutTest::check(const QString& language, bool light, void (Screens::*visit)())
{
    const Installation::Language inForce(language);
    QVERIFY(Installation::setTheme(light));
    QStringList visited;
    int faults = 0;
    Screens screens([&](const QString& name, QWidget* shown) {
        visited.append(name);
        const QStringList found = layoutFaults(shown);
        for (const QString& fault : found) {
            qInfo().noquote()
                << QStringLiteral("%1, scale %2, %3: %4").arg(language, QLatin1String(m_scale), name, fault);
        }
        faults += found.size();
    });
    (screens.*visit)();
    QCOMPARE(visited.removeDuplicates(), 0);
    QCOMPARE(faults, 0); // they stand above
}

void LayoutTest::themesDifferInColoursAlone_data()
{
    addProofLanguages();
}

void LayoutTest::themesDifferInColoursAlone()
{
    QFETCH(const QString, language);
    const Installation::Language inForce(language);
    const auto light = geometryOfAll(true);
    const auto dark = geometryOfAll(false);
    QVERIFY(!light.empty());
    QCOMPARE(light.size(), dark.size());
    for (const auto& [name, geometry] : light) {
        const Geometry other = dark.at(name);
        QVERIFY2(geometry == other,
                 qPrintable(QString(name + QStringLiteral(": ") + difference(geometry, other))));
    }
}

int runLayoutTest(int argc, char* argv[], const char* scale)
{
    qputenv("QT_SCALE_FACTOR", scale);
    // Windows go here before the server has told that they came, and the platform complains of that.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb.warning=false"));
    HelperApplication::prepareDrawing();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    LayoutTest test(scale);
    return QTest::qExec(&test, argc, argv);
}
