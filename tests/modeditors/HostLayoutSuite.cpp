#include "modeditors/HostSuites.h"

#include <QGridLayout>
#include <QMetaEnum>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <functional>

namespace {

constexpr int buttonHeight = 60;

using Build = std::function<void(RemoteModEditor*)>;

QSpacerItem* spacer(int width, int height, QSizePolicy::Policy horizontal = QSizePolicy::Minimum,
                    QSizePolicy::Policy vertical = QSizePolicy::Expanding)
{
    return new QSpacerItem(width, height, horizontal, vertical);
}

QPushButton* button()
{
    auto* const made = new QPushButton;
    made->setFixedHeight(buttonHeight);
    return made;
}

const char* policyName(QSizePolicy::Policy policy)
{
    return QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy);
}

// Every spacer of the layout and of the layouts in it, in the order of the items: "20x40 Minimum Expanding".
void describeSpacers(const QLayout* layout, QStringList* texts)
{
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* const item = layout->itemAt(i);
        if (const QSpacerItem* const space = item->spacerItem()) {
            const QSize size = space->sizeHint();
            texts->append(QStringLiteral("%1x%2 %3 %4")
                              .arg(size.width())
                              .arg(size.height())
                              .arg(QLatin1String(policyName(space->sizePolicy().horizontalPolicy())),
                                   QLatin1String(policyName(space->sizePolicy().verticalPolicy()))));
        } else if (item->layout()) {
            describeSpacers(item->layout(), texts);
        } else if (item->widget() && item->widget()->layout()) {
            describeSpacers(item->widget()->layout(), texts);
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(Build)

// What becomes of the form of an editor when the host takes it in.
class HostLayoutSuite final : public QObject
{
    Q_OBJECT

private slots:
    void theLowestSpacerLosesItsHeight_data();
    void theLowestSpacerLosesItsHeight();
    void anEditorEndsWithItsContent();
    void anEditorInAShownHostEndsWithItsContent();
    void anEditorWithoutALayoutIsTakenAsItIs();
};

void HostLayoutSuite::theLowestSpacerLosesItsHeight_data()
{
    QTest::addColumn<Build>("build");
    QTest::addColumn<QStringList>("spacers");
    const auto row = [](const char* name, const QStringList& spacers, const Build& build) {
        QTest::newRow(name) << build << spacers;
    };
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    row("no spacer", {},
        [](RemoteModEditor* editor) { (new QGridLayout(editor))->addWidget(button(), 0, 0); });
    row("no item", {}, [](RemoteModEditor* editor) { new QGridLayout(editor); });
    row("one at the end", {text("20x0 Minimum Fixed")}, [](RemoteModEditor* editor) {
        auto* const grid = new QGridLayout(editor);
        grid->addWidget(button(), 0, 0);
        grid->addItem(spacer(20, 566), 1, 0);
    });
    row("one above the buttons", {text("20x0 Minimum Fixed")}, [](RemoteModEditor* editor) {
        auto* const grid = new QGridLayout(editor);
        grid->addWidget(button(), 8, 0);
        grid->addItem(spacer(20, 566), 7, 0);
    });
    row("horizontal policy and width stay", {text("37x0 MinimumExpanding Fixed")},
        [](RemoteModEditor* editor) {
            (new QGridLayout(editor))
                ->addItem(spacer(37, 5, QSizePolicy::MinimumExpanding, QSizePolicy::Preferred), 0, 0);
        });
    row("a horizontal spacer counts too", {text("20x40 Minimum Expanding"), text("40x0 Expanding Fixed")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(20, 40), 0, 0);
            grid->addItem(spacer(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum), 1, 0);
        });
    row("the lower of two", {text("1x0 Minimum Fixed"), text("2x30 Minimum Expanding")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(1, 30), 5, 0);
            grid->addItem(spacer(2, 30), 2, 1);
        });
    row("the last row counts, not the first", {text("1x0 Minimum Fixed"), text("2x30 Minimum Expanding")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(1, 30), 0, 0, 6, 1);
            grid->addItem(spacer(2, 30), 4, 1);
        });
    row("a tie goes to the larger column", {text("1x30 Minimum Expanding"), text("2x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(1, 30), 5, 0);
            grid->addItem(spacer(2, 30), 5, 1);
        });
    row("a tie, the larger column first", {text("2x0 Minimum Fixed"), text("1x30 Minimum Expanding")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(2, 30), 5, 1);
            grid->addItem(spacer(1, 30), 5, 0);
        });
    row("a tie of last rows", {text("1x30 Minimum Expanding"), text("2x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(1, 30), 5, 0, 1, 2);
            grid->addItem(spacer(2, 30), 3, 2, 3, 1);
        });
    row("a tie, one to the last column", {text("1x30 Minimum Expanding"), text("2x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addWidget(button(), 0, 3);
            grid->addItem(spacer(1, 30), 1, 0, 1, -1);
            grid->addItem(spacer(2, 30), 1, 1);
        });
    row("without height it is left alone", {text("20x0 Minimum Expanding")},
        [](RemoteModEditor* editor) { (new QGridLayout(editor))->addItem(spacer(20, 0), 3, 0); });
    row("the lowest without height, one above it",
        {text("20x40 Minimum Expanding"), text("20x0 Minimum Expanding")}, [](RemoteModEditor* editor) {
            auto* const grid = new QGridLayout(editor);
            grid->addItem(spacer(20, 40), 1, 0);
            grid->addItem(spacer(20, 0), 3, 0);
        });
    row("each of two grids, side by side", {text("1x0 Minimum Fixed"), text("2x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const column = new QVBoxLayout(editor);
            for (int width : {1, 2}) {
                auto* const grid = new QGridLayout;
                column->addLayout(grid);
                grid->addItem(spacer(width, 30), 0, 0);
            }
        });
    row("a grid in a grid",
        {text("1x30 Minimum Expanding"), text("2x0 Minimum Fixed"), text("3x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const outer = new QGridLayout(editor);
            auto* const inner = new QGridLayout;
            inner->addItem(spacer(1, 30), 0, 0);
            inner->addItem(spacer(2, 30), 1, 0);
            outer->addLayout(inner, 0, 0);
            outer->addItem(spacer(3, 30), 1, 0);
        });
    row("a grid of a widget in a grid", {text("1x0 Minimum Fixed"), text("2x0 Minimum Fixed")},
        [](RemoteModEditor* editor) {
            auto* const outer = new QGridLayout(editor);
            auto* const page = new QWidget;
            (new QGridLayout(page))->addItem(spacer(1, 30), 0, 0);
            outer->addWidget(page, 0, 0);
            outer->addItem(spacer(2, 30), 1, 0);
        });
    row("other layouts keep theirs", {text("20x40 Minimum Expanding")},
        [](RemoteModEditor* editor) { (new QVBoxLayout(editor))->addItem(spacer(20, 40)); });
}

void HostLayoutSuite::theLowestSpacerLosesItsHeight()
{
    QFETCH(const Build, build);
    RemoteModEditorHost host([&](const QString& kind, QWidget* parent) {
        auto* const editor = new FakeEditor(parent, kind);
        build(editor);
        return editor;
    });
    Item().applyTo(host);
    QStringList spacers;
    describeSpacers(editorOf(host)->layout(), &spacers);
    QTEST(spacers, "spacers");
}

namespace {

// As a form of the editors is made: buttons, a spacer, and hidden buttons at the end.
RemoteModEditor* createForm(const QString& kind, QWidget* parent)
{
    auto* const editor = new FakeEditor(parent, kind);
    auto* const grid = new QGridLayout(editor);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    grid->addWidget(button(), 0, 0);
    grid->addWidget(button(), 1, 0);
    grid->addItem(spacer(20, 566), 2, 0);
    QPushButton* const hidden = button();
    grid->addWidget(hidden, 3, 0);
    hidden->hide();
    (void)editor->sizeHint(); // the layout has measured its items before the host sees them
    grid->activate();
    return editor;
}

} // namespace

void HostLayoutSuite::anEditorEndsWithItsContent()
{
    RemoteModEditorHost host(createForm);
    Item().applyTo(host);
    QCOMPARE(host.sizeHint().height(), 2 * buttonHeight + 6);
    QCOMPARE(host.minimumSizeHint().height(), 2 * buttonHeight + 6);
}

void HostLayoutSuite::anEditorInAShownHostEndsWithItsContent()
{
    QWidget window;
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSizeConstraint(QLayout::SetNoConstraint); // the platform of the test knows no size hints
    auto* const host = new RemoteModEditorHost(createForm);
    column->addWidget(host);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    Item().applyTo(*host);
    QTRY_VERIFY(editorOf(*host)->isVisible());
    QTRY_COMPARE(window.minimumSizeHint().height(), 2 * buttonHeight + 6);
    window.adjustSize();
    QTRY_COMPARE(editorOf(*host)->height(), 2 * buttonHeight + 6);
}

void HostLayoutSuite::anEditorWithoutALayoutIsTakenAsItIs()
{
    RemoteModEditorHost host(createFakeEditor);
    Item().applyTo(host);
    QVERIFY(editorOf(host));
    QCOMPARE(editorOf(host)->layout(), nullptr);
}

std::unique_ptr<QObject> makeHostLayoutSuite()
{
    return std::make_unique<HostLayoutSuite>();
}

#include "HostLayoutSuite.moc"
