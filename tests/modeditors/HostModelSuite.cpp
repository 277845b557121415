#include "modeditors/HostSuites.h"

#include <QJsonObject>
#include <QLabel>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QVector>
#include <optional>

using MinibarHelperProtocol::ModChangeRequest;

namespace {

constexpr int steps = 20000;

// One step's item, of so few values that they often repeat.
class ItemSource final
{
public:
    explicit ItemSource(quint32 seed)
        : m_random(seed)
    {}

    [[nodiscard]] int below(int bound) { return m_random.bounded(bound); }

    // Mostly the item before with one change, so that all ways of being equal are met.
    void change(Item* item)
    {
        switch (below(10)) {
        case 0:
            item->key = QString::fromLatin1(pick({"", "b1", "b2"}));
            break;
        case 1:
            item->type = QString::fromLatin1(pick({"Fake", "Fake  Two", "Other", ""}));
            break;
        case 2:
            item->rawKind = QString::fromLatin1(pick({"fake", " FAKE ", "fake two", "simple", "", "other"}));
            break;
        case 3:
            item->title = QString::fromLatin1(pick({"One", "Two"}));
            break;
        case 4:
            item->state = json(pick({"{}", R"({"a":1})", R"({"a":2})"}));
            break;
        case 5:
            item->profile = json(pick({"{}", R"({"max":1})"}));
            break;
        case 6:
            item->revision = below(4);
            break;
        case 7:
            item->enabled = below(2) == 1;
            break;
        default:
            break;
        }
    }

private:
    const char* pick(std::initializer_list<const char*> texts)
    {
        return texts.begin()[below(int(texts.size()))];
    }

    QRandomGenerator m_random;
};

// The kind by the rules, told once more in other words.
QString expectedKind(const Item& item)
{
    const auto words = [](const QString& text) {
        return text.toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts).join(QLatin1Char('-'));
    };
    const QString raw = words(item.rawKind);
    return raw == QLatin1String("simple") || raw.isEmpty() ? words(item.type) : raw;
}

struct Applied
{
    QJsonObject state;
    QJsonObject profile;
    bool enabled;
};

bool operator==(const Applied& left, const Applied& right)
{
    return left.state == right.state && left.profile == right.profile && left.enabled == right.enabled;
}

// What the host must have done so far.
struct Model
{
    QString key;
    QString kind;
    QString sentence = QStringLiteral("Select a modulation item.");
    int made = 0;
    int applications = 0; // to the present editor
    std::optional<Applied> applied;
    bool pending = false;
    int requests = 0;

    [[nodiscard]] bool hasEditor() const { return sentence.isEmpty(); }

    void apply(const Item& item)
    {
        const QString newKind = expectedKind(item);
        if (item.key != key || newKind != kind) {
            key = item.key;
            kind = newKind;
            applied.reset();
            applications = 0;
            const bool known = kind.startsWith(QLatin1String("fake"));
            sentence = key.isEmpty() ? QStringLiteral("Select a modulation item.")
                       : known       ? QString()
                                     : QString(QLatin1String("No UI editor is available for ") + item.title +
                                               QLatin1Char('.'));
            made += hasEditor() ? 1 : 0;
        }
        const Applied now{item.state, item.profile, item.enabled};
        if (hasEditor() && (pending || !applied || !(*applied == now))) {
            applied = now;
            ++applications;
        }
        pending = false;
    }
};

} // namespace

// Whatever happens between, the editor shows what the last item says, and is told no more often than needed.
class HostModelSuite final : public QObject
{
    Q_OBJECT

private slots:
    void theEditorShowsTheLastItem_data();
    void theEditorShowsTheLastItem();

private:
    void compare(const RemoteModEditorHost& host, const Model& model, const Item& item);
};

void HostModelSuite::compare(const RemoteModEditorHost& host, const Model& model, const Item& item)
{
    const FakeEditor* const editor = editorOf(host);
    const QLabel* const label = host.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(label ? label->text() : QString(), model.sentence);
    QCOMPARE(bool(editor), model.hasEditor());
    QCOMPARE(FakeEditor::alive, model.hasEditor() ? 1 : 0);
    QCOMPARE(FakeEditor::made, model.made);
    if (editor) {
        QCOMPARE(editor->kind, model.kind);
        QCOMPARE(editor->state, item.state);
        QCOMPARE(editor->profile, item.profile);
        QCOMPARE(editor->enabled, item.enabled);
        QCOMPARE(editor->applications, model.applications);
    }
}

void HostModelSuite::theEditorShowsTheLastItem_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::newRow("seed 1") << 1U;
    QTest::newRow("seed 20240229") << 20240229U;
    QTest::newRow("seed 4294967295") << 4294967295U;
}

void HostModelSuite::theEditorShowsTheLastItem()
{
    QFETCH(const quint32, seed);
    ItemSource source(seed);
    FakeEditor::made = 0;
    RemoteModEditorHost host(createFakeEditor);
    QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    Model model;
    Item item;
    item.key.clear();
    int edits = 0;
    for (int step = 0; step < steps; ++step) {
        FakeEditor* const editor = editorOf(host);
        if (editor && source.below(4) == 0) {
            const bool byAction = source.below(2) == 0;
            const QString action = byAction && source.below(3) > 0 ? QStringLiteral("set-field") : QString();
            requests.clear();
            byAction ? emit editor->actionEdited(action, {}) : emit editor->enabledEdited();
            const bool sent = !byAction || !action.isEmpty();
            QCOMPARE(requests.count(), sent ? 1 : 0);
            if (sent) {
                const auto request = requests.first().first().value<ModChangeRequest>();
                QCOMPARE(request.businessId, item.key);
                QCOMPARE(request.expectedRevision, item.revision);
                QCOMPARE(request.hasEnabled, !byAction);
                QCOMPARE(request.enabled, !byAction && item.enabled);
                QCOMPARE(request.action, action);
                QVERIFY(!request.hasProfile);
                ++edits;
            }
            model.pending = model.pending || sent;
            continue;
        }
        requests.clear();
        source.change(&item);
        item.applyTo(host);
        model.apply(item);
        QCOMPARE(requests.count(), 0);
        compare(host, model, item);
        if (QTest::currentTestFailed()) {
            qInfo("seed %u, step %d", seed, step);
            return;
        }
    }
    // The walk has been everywhere.
    QVERIFY(edits > steps / 20);
    QVERIFY(model.made > steps / 100);
}

std::unique_ptr<QObject> makeHostModelSuite()
{
    return std::make_unique<HostModelSuite>();
}

#include "HostModelSuite.moc"
