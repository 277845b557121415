#include "controls/ElidedLabel.h"
#include "controls/ThemeManager.h"
#include "formeditors/FormFixture.h"
#include "formeditors/PathList.h"
#include "support/Translators.h"

#include <QFile>
#include <QGridLayout>

using Controls::ElidedLabel;
using Controls::ThemeManager;

namespace {

constexpr int popupWidth = 560;
constexpr int narrowScreen = 400;
constexpr int buttonHeight = 60;

// Every value at its longest.
constexpr char longState[] =
    R"({"Rate":123456789.123,"Depth":99.99,"Shape":"Triangle","Deviation":1234567890.123,
        "PhaseDeviation":6.2831,"InitPhase":-3.1415,"Width":1.234567e-6,"Period":0.001234567,"Span":999999999.999,
        "SweepTime":1.234567e-3,"Bandwith":123456789.123,"Length":1.234567e-3,"SymbolRate":123456789.123,
        "FilterAlpha":0.35,"Code":123456789,"FilterLength":123456789,"SequenceSeed":4294967295,
        "FilterType":"RootRaisedCosine","ModulationType":"QAM256","Oversample":32,"FFTSize":2048,
        "SymbolCount":123456789,"GuardBandCarriersLeft":2048,"GuardBandCarriersRight":2048,"GuardInterval":99.999,
        "WindowLength":99.99,"SampleRate":123456789.123,"NullDC":true,"FileName":"/data/a.wav",
        "FileList":["/data/a.wav","/data/b.wav"],"IQScale":99.99,"SamplesToUse":4294967295,"Period":4294967295,
        "SampleOffset":4294967295})";

QString styleSheetOf(ThemeManager::Theme theme)
{
    QFile file(QStringLiteral(CONFIGURATION_DIR) +
               QLatin1String(theme == ThemeManager::Light ? "/theme_light.css" : "/theme.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// As the host puts it into the popup.
void stand(FormFixture* fixture, int width)
{
    const auto switches = fixture->editor->findChildren<SwitchButton*>();
    for (SwitchButton* button : switches)
        button->setCompactMode(true);
    auto* const grid = fixture->find<QGridLayout>("gridLayout");
    for (int i = 0; i < grid->count(); ++i) {
        if (QSpacerItem* const spacer = grid->itemAt(i)->spacerItem())
            spacer->changeSize(20, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
    }
    grid->invalidate();
    fixture->apply(longState, R"({"filterAlphaEditable":true})");
    fixture->window.show();
    fixture->editor->resize(width, fixture->editor->sizeHint().height());
    fixture->window.resize(fixture->editor->size());
    QCoreApplication::processEvents();
}

QVector<QWidget*> shownWidgets(const FormFixture& fixture)
{
    QVector<QWidget*> widgets;
    const auto children = fixture.editor->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (child->isVisible())
            widgets.append(child);
    }
    return widgets;
}

} // namespace

// Nothing is cut silently, nothing overlaps, everything stands in line.
class FormLookSuite final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void formStandsInLine_data();
    void formStandsInLine();
    void captionsAndValuesFit_data() { addKinds(); }
    void captionsAndValuesFit();
    void selectedFileHasOneStripe();
};

void FormLookSuite::cleanup()
{
    qApp->setStyleSheet({});
    ThemeManager::instance().setTheme(ThemeManager::Light);
}

void FormLookSuite::formStandsInLine_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("longTexts");
    QTest::addColumn<int>("width");
    for (const ExpectedForm& form : expectedForms()) {
        for (bool longTexts : {false, true}) {
            for (int width : {popupWidth, narrowScreen})
                QTest::addRow("%s, %s texts, %d", form.kind, longTexts ? "long" : "usual", width)
                    << QString::fromLatin1(form.kind) << longTexts << width;
        }
    }
}

void FormLookSuite::formStandsInLine()
{
    QFETCH(const QString, kind);
    QFETCH(const bool, longTexts);
    QFETCH(const int, width);
    qApp->setStyleSheet(styleSheetOf(ThemeManager::Light));
    TestSupport::DoublingTranslator doubling;
    if (longTexts)
        QVERIFY(QCoreApplication::installTranslator(&doubling));
    FormFixture fixture(kind);
    stand(&fixture, width);
    QCoreApplication::removeTranslator(&doubling);
    const QVector<QWidget*> widgets = shownWidgets(fixture);
    const QStringList wide = expectedForm(kind).wide;
    int bottom = 0;
    for (QWidget* widget : widgets) {
        const QByteArray name = widget->objectName().toLatin1();
        const QRect place = widget->geometry();
        bottom = qMax(bottom, place.bottom());
        QVERIFY2(fixture.editor->rect().contains(place), name.constData());
        if (wide.contains(widget->objectName())) {
            QVERIFY2(place.left() == 10 && place.right() == width - 1 - 6, name.constData());
            continue;
        }
        QVERIFY2(place.height() == buttonHeight, name.constData());
        const bool left = place.left() == 10;
        const bool right = place.right() == width - 1 - 6;
        QVERIFY2(left != right, name.constData());
        QVERIFY2(qAbs(2 * place.width() + 5 - (width - 16)) <= 1, name.constData());
        QVERIFY2(!wide.isEmpty() || place.top() % (buttonHeight + 5) == 0, name.constData());
        for (const QWidget* other : widgets)
            QVERIFY2(other == widget || !place.intersects(other->geometry()), name.constData());
        const auto labels = widget->findChildren<ElidedLabel*>();
        for (const ElidedLabel* label : labels) {
            QVERIFY2(widget->rect().contains(label->geometry()), name.constData());
            QVERIFY2(!label->isCut() || widget->toolTip().contains(label->text()), name.constData());
        }
    }
    QVERIFY(fixture.editor->height() < bottom + 30); // it ends where its content ends
}

void FormLookSuite::captionsAndValuesFit()
{
    QFETCH(const QString, kind);
    for (ThemeManager::Theme theme : {ThemeManager::Light, ThemeManager::Dark}) {
        ThemeManager::instance().setTheme(theme);
        qApp->setStyleSheet(styleSheetOf(theme));
        FormFixture fixture(kind);
        stand(&fixture, popupWidth);
        const auto labels = fixture.editor->findChildren<ElidedLabel*>();
        for (const ElidedLabel* label : labels)
            QVERIFY2(!label->isVisible() || !label->isCut(), qPrintable(label->text()));
    }
}

void FormLookSuite::selectedFileHasOneStripe()
{
    constexpr int stripeWidth = 3;
    constexpr int aboveTheText = 2;
    ThemeManager::instance().setTheme(ThemeManager::Dark);
    qApp->setStyleSheet(styleSheetOf(ThemeManager::Dark));
    FormFixture fixture("streaming");
    stand(&fixture, popupWidth);
    auto* const list = fixture.find<PathList>("FileList");
    list->setCurrentRow(1);
    const QImage row = list->viewport()->grab(list->visualItemRect(list->item(1))).toImage();
    const QColor stripe = ThemeManager::instance().color(ThemeManager::FocusRing);
    const QColor selected = ThemeManager::instance().color(ThemeManager::Accent);
    for (int x = 0; x < row.width(); ++x)
        QCOMPARE(row.pixelColor(x, aboveTheText), x < stripeWidth ? stripe : selected);
}

std::unique_ptr<QObject> makeFormLookSuite()
{
    return std::make_unique<FormLookSuite>();
}

#include "FormLookSuite.moc"
