#include "formeditors/FormFixture.h"
#include "support/LanguageTable.h"
#include "support/Translators.h"

#include <QGridLayout>

namespace {

constexpr char tallSpacerKind[] = "am";

// The context and text of all that a form is expected to say.
QSet<QString> expectedTexts(const ExpectedForm& form)
{
    QSet<QString> texts;
    const QString formContext = QLatin1String(form.formName) + QLatin1Char('|');
    const QString classContext = QLatin1String(form.className) + QLatin1Char('|');
    texts.insert(formContext + QLatin1String("Form"));
    for (const ExpectedButton& button : form.buttons) {
        if (*button.text != '\0')
            texts.insert(formContext + QLatin1String(button.text));
    }
    for (const ExpectedNumber& number : form.numbers)
        texts.insert(classContext + QLatin1String(number.title));
    for (const ExpectedChoice& choice : form.choices) {
        for (const QString& text : choice.texts) {
            if (choice.translated)
                texts.insert(classContext + text);
        }
    }
    for (const QString& text : form.furtherTexts)
        texts.insert(classContext + text);
    return texts;
}

} // namespace

// What each form is made of.
class FormShapeSuite final : public QObject
{
    Q_OBJECT

private slots:
    void factoryKnowsTheseKinds_data() { addKinds(); }
    void factoryKnowsTheseKinds();
    void factoryKnowsNoOtherKind_data();
    void factoryKnowsNoOtherKind();
    void formIsMadeOfTheseButtons_data() { addKinds(); }
    void formIsMadeOfTheseButtons();
    void gridIsAsDesigned_data() { addKinds(); }
    void gridIsAsDesigned();
    void amButtonsStandInTheseCells();
    void tabKeyGoesThroughTheFormInReadingOrder_data() { addKinds(); }
    void tabKeyGoesThroughTheFormInReadingOrder();
    void textsAreTranslatedInTheirContext_data() { addKinds(); }
    void textsAreTranslatedInTheirContext();
    void listsTellTheirTitle_data() { addKinds(); }
    void listsTellTheirTitle();
};

void FormShapeSuite::factoryKnowsTheseKinds()
{
    QFETCH(const QString, kind);
    QWidget parent;
    const RemoteModEditor* const editor = createFormEditor(kind, &parent);
    QVERIFY(editor);
    QCOMPARE(editor->parentWidget(), &parent);
    QCOMPARE(editor->objectName(), QString::fromLatin1(expectedForm(kind).formName));
    QCOMPARE(editor->windowTitle(), QStringLiteral("Form"));
    QVERIFY(editor->styleSheet().isEmpty());
}

void FormShapeSuite::factoryKnowsNoOtherKind_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"", "AM", "am ", "digital ramp", "ramp", "dss", "digital", "multitone"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void FormShapeSuite::factoryKnowsNoOtherKind()
{
    QFETCH(const QString, kind);
    QWidget parent;
    QVERIFY(!createFormEditor(kind, &parent));
    QVERIFY(parent.children().isEmpty());
}

void FormShapeSuite::formIsMadeOfTheseButtons()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    QSet<QString> expected;
    for (const ExpectedButton& button : expectedForm(kind).buttons) {
        auto* const widget = fixture.find<QWidget>(button.name);
        QCOMPARE(QLatin1String(widget->metaObject()->className()), QLatin1String(button.className));
        QCOMPARE(widget->property("text").toString(), QString::fromLatin1(button.text));
        QCOMPARE(widget->isHidden(), button.hidden);
        expected.insert(widget->objectName());
    }
    QSet<QString> found;
    const auto children = fixture.editor->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children)
        found.insert(child->objectName());
    QCOMPARE(found, expected);
}

void FormShapeSuite::gridIsAsDesigned()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    auto* const grid = fixture.find<QGridLayout>("gridLayout");
    QCOMPARE(fixture.editor->layout(), grid);
    QCOMPARE(grid->spacing(), 5);
    const QMargins margins = grid->contentsMargins();
    const int usual = fixture.editor->style()->pixelMetric(QStyle::PM_LayoutBottomMargin);
    QCOMPARE(margins, QMargins(10, 0, 6, usual));
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), fixture.find<QWidget>("enabled"));
    QCOMPARE(grid->columnCount(), 2);
    QCOMPARE(grid->columnStretch(0), grid->columnStretch(1));
    int lowestShown = 0;
    int spacers = 0;
    int spacerRow = 0;
    for (int i = 0; i < grid->count(); ++i) {
        int row = 0;
        int column = 0;
        int rowSpan = 0;
        int columnSpan = 0;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        if (const QSpacerItem* const spacer = grid->itemAt(i)->spacerItem()) {
            ++spacers;
            spacerRow = row;
            QCOMPARE(spacer->sizeHint(), QSize(20, kind == QLatin1String(tallSpacerKind) ? 378 : 0));
            QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
            QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
        } else if (!grid->itemAt(i)->widget()->isHidden()) {
            lowestShown = qMax(lowestShown, row);
        }
    }
    QCOMPARE(spacers, 1);
    QVERIFY(spacerRow > lowestShown);
}

void FormShapeSuite::amButtonsStandInTheseCells()
{
    const FormFixture fixture("am");
    auto* const grid = fixture.find<QGridLayout>("gridLayout");
    const auto nameAt = [grid](int row, int column) {
        return grid->itemAtPosition(row, column)->widget()->objectName();
    };
    QCOMPARE(nameAt(0, 0), QStringLiteral("enabled"));
    QCOMPARE(nameAt(0, 1), QStringLiteral("btnRate"));
    QCOMPARE(nameAt(2, 0), QStringLiteral("btnDepth"));
    QCOMPARE(nameAt(2, 1), QStringLiteral("btnShape"));
    QCOMPARE(nameAt(7, 0), QStringLiteral("btnSave"));
}

void FormShapeSuite::tabKeyGoesThroughTheFormInReadingOrder()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    fixture.apply(expectedForm(kind).editableState);
    QVERIFY(fixture.show());
    const auto* const first = fixture.onOff("enabled");
    fixture.onOff("enabled")->setFocus();
    QPoint last(-1, -1);
    int stops = 0;
    do {
        const QWidget* const focused = QApplication::focusWidget();
        QVERIFY(focused && fixture.editor->isAncestorOf(focused));
        const QPoint place = focused->pos();
        QVERIFY2(place.y() > last.y() || (place.y() == last.y() && place.x() > last.x()),
                 qPrintable(focused->objectName()));
        last = place;
        ++stops;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first);
    int expected = 0;
    const auto children = fixture.editor->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children)
        expected += child->isVisible() && child->isEnabled() && child->focusPolicy() != Qt::NoFocus ? 1 : 0;
    QCOMPARE(stops, expected);
}

void FormShapeSuite::textsAreTranslatedInTheirContext()
{
    QFETCH(const QString, kind);
    const ExpectedForm& form = expectedForm(kind);
    TestSupport::RecordingTranslator recorder;
    QVERIFY(QCoreApplication::installTranslator(&recorder));
    recorder.asked.clear(); // what the installation itself has made others ask
    const FormFixture fixture(kind);
    fixture.apply("{}");
    NumericFieldSpec spec;
    (void)fixture.editor->describeNumericField(QStringLiteral("DutyCycle"), spec);
    QCoreApplication::removeTranslator(&recorder);
    QSet<QString> asked;
    for (const QString& text : qAsConst(recorder.asked)) {
        // The kit's own words have contexts of their own.
        if (!text.startsWith(QLatin1String("SwitchButton|")))
            asked.insert(text);
    }
    QCOMPARE(asked, expectedTexts(form));
    QCOMPARE(asked - TestSupport::translatableTexts(QStringLiteral(CONFIGURATION_DIR)), QSet<QString>());
}

void FormShapeSuite::listsTellTheirTitle()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    for (const ExpectedChoice& choice : expectedForm(kind).choices) {
        const EnumTextButton* const button = fixture.choice(choice.button);
        QCOMPARE(button->enums(), choice.texts);
        QCOMPARE(button->titleText(), button->text());
        QCOMPARE(button->viewMode(), choice.viewMode);
    }
}

std::unique_ptr<QObject> makeFormShapeSuite()
{
    return std::make_unique<FormShapeSuite>();
}

#include "FormShapeSuite.moc"
