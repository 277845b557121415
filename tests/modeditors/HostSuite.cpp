#include "controls/SwitchButton.h"
#include "modeditors/HostSuites.h"

#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>
#include <functional>

namespace {

QLabel* placeholderOf(const RemoteModEditorHost& host)
{
    return host.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

using ItemChange = std::function<void(Item&)>;
Q_DECLARE_METATYPE(ItemChange)

// Which editor or sentence stands in the host, and when an editor is told its state.
class HostSuite final : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyHostAsksForAnItem();
    void theKindOfAnItem_data();
    void theKindOfAnItem();
    void anUnknownKindHasNoEditor_data();
    void anUnknownKindHasNoEditor();
    void aPlaceholderNamesTheItem_data();
    void aPlaceholderNamesTheItem();
    void whatMakesANewEditor_data();
    void whatMakesANewEditor();
    void whatIsAppliedAgain_data();
    void whatIsAppliedAgain();
    void theEditorIsReplacedAtOnce();
    void editorAndPlaceholderNeverCoexist();
    void switchesAreCompact_data();
    void switchesAreCompact();
};

void HostSuite::anEmptyHostAsksForAnItem()
{
    const RemoteModEditorHost host;
    QCOMPARE(host.objectName(), QStringLiteral("remoteModEditorHost"));
    const QLabel* const placeholder = placeholderOf(host);
    QVERIFY(placeholder);
    QCOMPARE(placeholder->text(), QStringLiteral("Select a modulation item."));
    QCOMPARE(placeholder->minimumHeight(), 60);
    QCOMPARE(placeholder->alignment(), Qt::Alignment(Qt::AlignCenter));
    const auto* const layout = qobject_cast<QVBoxLayout*>(host.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->spacing(), 0);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(host.sizeHint().height(), 60);
}

void HostSuite::theKindOfAnItem_data()
{
    QTest::addColumn<QString>("rawKind");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("kind");
    QTest::newRow("raw kind") << "digital"
                              << "AM"
                              << "digital";
    QTest::newRow("upper case") << "DIGITAL"
                                << "AM"
                                << "digital";
    QTest::newRow("two words") << "Digital Ramp"
                               << "AM"
                               << "digital-ramp";
    QTest::newRow("blanks around and between") << "  Digital \t\n Ramp "
                                               << "AM"
                                               << "digital-ramp";
    QTest::newRow("three words") << "a B c"
                                 << "AM"
                                 << "a-b-c";
    QTest::newRow("hyphen stays") << "quick-waveform"
                                  << "AM"
                                  << "quick-waveform";
    QTest::newRow("no raw kind") << ""
                                 << "AM"
                                 << "am";
    QTest::newRow("blank raw kind") << " \t "
                                    << "Digital Ramp"
                                    << "digital-ramp";
    QTest::newRow("simple") << "simple"
                            << "Quick Waveform"
                            << "quick-waveform";
    QTest::newRow("simple, spelt otherwise") << " Simple "
                                             << "Quick Waveform"
                                             << "quick-waveform";
    QTest::newRow("begins with simple") << "simple one"
                                        << "AM"
                                        << "simple-one";
    QTest::newRow("simple twice") << "simple"
                                  << "Simple"
                                  << "simple";
    QTest::newRow("nothing at all") << ""
                                    << ""
                                    << "";
    QTest::newRow("other letters") << "\u00c4 B"
                                   << "AM"
                                   << "\u00e4-b";
}

void HostSuite::theKindOfAnItem()
{
    Item item;
    QFETCH(const QString, rawKind);
    QFETCH(const QString, type);
    item.rawKind = rawKind;
    item.type = type;
    QStringList asked;
    RemoteModEditorHost host([&asked](const QString& kind, QWidget*) -> RemoteModEditor* {
        asked.append(kind);
        return nullptr;
    });
    QCOMPARE(asked, QStringList());
    item.applyTo(host);
    QFETCH(const QString, kind);
    // With no type and no raw kind the stored kind is still the right one; the key is new.
    QCOMPARE(asked, QStringList(kind));
    QCOMPARE(normalizeEditorKind(kind), kind);
}

void HostSuite::anUnknownKindHasNoEditor_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("unknown") << "no-such-kind";
    QTest::newRow("empty") << "";
    QTest::newRow("simple") << "simple";
    QTest::newRow("not normalised") << "Digital Ramp";
    QTest::newRow("upper case") << "AM";
}

void HostSuite::anUnknownKindHasNoEditor()
{
    QFETCH(const QString, kind);
    QWidget parent;
    QVERIFY(!createModEditor(kind, &parent));
    QVERIFY(parent.children().isEmpty());
}

void HostSuite::aPlaceholderNamesTheItem_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("title") << "Hop Set"
                           << "No UI editor is available for Hop Set.";
    QTest::newRow("no title") << ""
                              << "No UI editor is available for .";
    QTest::newRow("title with a place-holder") << "%1 and %2"
                                               << "No UI editor is available for %1 and %2.";
    QTest::newRow("title with a mark-up") << "<b>Hop</b> & Set"
                                          << "No UI editor is available for <b>Hop</b> & Set.";
}

void HostSuite::aPlaceholderNamesTheItem()
{
    QFETCH(const QString, title);
    RemoteModEditorHost host;
    Item item;
    item.rawKind = QStringLiteral("no such kind");
    item.title = title;
    item.applyTo(host);
    const QLabel* const placeholder = placeholderOf(host);
    QVERIFY(placeholder);
    QTEST(placeholder->text(), "text");
    QCOMPARE(placeholder->textFormat(), Qt::PlainText);
    QCOMPARE(placeholder->minimumHeight(), 60);
    QCOMPARE(placeholder->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(host.layout()->count(), 1);
    Item().applyTo(host);
    item.key.clear();
    item.applyTo(host);
    QCOMPARE(placeholderOf(host)->text(), QStringLiteral("Select a modulation item."));
}

void HostSuite::whatMakesANewEditor_data()
{
    QTest::addColumn<ItemChange>("change");
    QTest::addColumn<bool>("isNew");
    const auto row = [](const char* name, bool isNew, const ItemChange& change) {
        QTest::newRow(name) << change << isNew;
    };
    row("nothing", false, [](Item&) {});
    row("key", true, [](Item& item) { item.key = QStringLiteral("b2"); });
    row("raw kind", true, [](Item& item) { item.rawKind = QStringLiteral("fake two"); });
    row("raw kind spelt otherwise", false, [](Item& item) { item.rawKind = QStringLiteral(" FAKE "); });
    row("raw kind to the same type", false, [](Item& item) {
        item.rawKind.clear();
        item.type = QStringLiteral("Fake");
    });
    row("type behind a raw kind", false, [](Item& item) { item.type = QStringLiteral("Other"); });
    row("title", false, [](Item& item) { item.title = QStringLiteral("Other"); });
    row("state", false, [](Item& item) { item.state = json(R"({"a":1})"); });
    row("profile", false, [](Item& item) { item.profile = json(R"({"a":1})"); });
    row("revision", false, [](Item& item) { item.revision = 2; });
    row("enabled", false, [](Item& item) { item.enabled = true; });
}

void HostSuite::whatMakesANewEditor()
{
    QFETCH(const ItemChange, change);
    QFETCH(const bool, isNew);
    RemoteModEditorHost host(createFakeEditor);
    Item item;
    item.applyTo(host);
    const int made = FakeEditor::made;
    const QPointer<RemoteModEditor> before = editorOf(host);
    QVERIFY(before);
    change(item);
    item.applyTo(host);
    QCOMPARE(FakeEditor::made - made, isNew ? 1 : 0);
    QCOMPARE(before.isNull(), isNew);
    FakeEditor* const editor = editorOf(host);
    QVERIFY(editor);
    QCOMPARE(host.layout()->count(), 1);
    QCOMPARE(host.layout()->itemAt(0)->widget(), editor);
    if (isNew) {
        QCOMPARE(editor->applications, 1);
    }
}

void HostSuite::whatIsAppliedAgain_data()
{
    QTest::addColumn<ItemChange>("change");
    QTest::addColumn<int>("applications");
    const auto row = [](const char* name, int applications, const ItemChange& change) {
        QTest::newRow(name) << change << applications;
    };
    row("nothing", 1, [](Item&) {});
    row("state", 2, [](Item& item) { item.state = json(R"({"a":2})"); });
    row("state, deep inside", 2, [](Item& item) { item.state = json(R"({"a":1,"b":{"c":[1,3]}})"); });
    row("state, the same in another order", 1,
        [](Item& item) { item.state = json(R"({"b":{"c":[1,2]},"a":1.0})"); });
    row("state, emptied", 2, [](Item& item) { item.state = {}; });
    row("profile", 2, [](Item& item) { item.profile = json(R"({"max":4})"); });
    row("enabled", 2, [](Item& item) { item.enabled = true; });
    row("revision alone", 1, [](Item& item) { item.revision = 2; });
    row("title alone", 1, [](Item& item) { item.title = QStringLiteral("Other"); });
    row("type alone", 1, [](Item& item) { item.type = QStringLiteral("Other"); });
}

void HostSuite::whatIsAppliedAgain()
{
    QFETCH(const ItemChange, change);
    QFETCH(const int, applications);
    RemoteModEditorHost host(createFakeEditor);
    Item item;
    item.state = json(R"({"a":1,"b":{"c":[1,2]}})");
    item.profile = json(R"({"max":3})");
    item.applyTo(host);
    FakeEditor* const editor = editorOf(host);
    QCOMPARE(editor->applications, 1);
    change(item);
    item.applyTo(host);
    QCOMPARE(editor->applications, applications);
    QCOMPARE(editor->state, item.state);
    QCOMPARE(editor->profile, item.profile);
    QCOMPARE(editor->enabled, item.enabled);
    item.applyTo(host); // and it stays so
    QCOMPARE(editor->applications, applications);
}

void HostSuite::theEditorIsReplacedAtOnce()
{
    {
        RemoteModEditorHost host(createFakeEditor);
        Item item;
        item.applyTo(host);
        QCOMPARE(FakeEditor::alive, 1);
        item.key = QStringLiteral("b2");
        item.applyTo(host);
        QCOMPARE(FakeEditor::alive, 1);
        item.rawKind = QStringLiteral("unknown");
        item.applyTo(host);
        QCOMPARE(FakeEditor::alive, 0);
        item.rawKind = QStringLiteral("fake");
        item.applyTo(host);
        QCOMPARE(FakeEditor::alive, 1);
    }
    QCOMPARE(FakeEditor::alive, 0);
}

void HostSuite::editorAndPlaceholderNeverCoexist()
{
    RemoteModEditorHost host(createFakeEditor);
    Item item;
    for (const char* kind : {"fake", "unknown", "unknown two", "fake two", "fake"}) {
        item.rawKind = QLatin1String(kind);
        item.applyTo(host);
        QVERIFY(bool(editorOf(host)) != bool(placeholderOf(host)));
        QCOMPARE(bool(editorOf(host)), item.rawKind.startsWith(QLatin1String("fake")));
        QCOMPARE(host.layout()->count(), 1);
    }
}

void HostSuite::switchesAreCompact_data()
{
    QTest::addColumn<QString>("rawKind");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("compact");
    QTest::newRow("any kind") << "digital"
                              << "Type" << true;
    QTest::newRow("quick-waveform") << "quick-waveform"
                                    << "Type" << false;
    QTest::newRow("simple, by type") << "simple"
                                     << "Quick Waveform" << false;
    QTest::newRow("quick-waveform by type only") << "digital"
                                                 << "Quick Waveform" << true;
}

void HostSuite::switchesAreCompact()
{
    QFETCH(const bool, compact);
    SwitchButton* switches[2] = {};
    RemoteModEditorHost host([&](const QString& kind, QWidget* parent) -> RemoteModEditor* {
        auto* const editor = new FakeEditor(parent, kind);
        switches[0] = new SwitchButton(editor);
        switches[1] = new SwitchButton(new QWidget(editor));
        for (SwitchButton* button : switches) {
            button->setCompactMode(!compact); // whatever the form says
        }
        return editor;
    });
    Item item;
    QFETCH(const QString, rawKind);
    QFETCH(const QString, type);
    item.rawKind = rawKind;
    item.type = type;
    item.applyTo(host);
    for (const SwitchButton* button : switches) {
        QCOMPARE(button->isCompactMode(), compact);
    }
}

std::unique_ptr<QObject> makeHostSuite()
{
    return std::make_unique<HostSuite>();
}

#include "HostSuite.moc"
