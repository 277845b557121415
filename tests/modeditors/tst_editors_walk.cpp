// Random walks of taps, snapshots, responses and time-outs through the bar's status, the editor host and the
// editors. After each step the editor must show exactly what a new editor shows that has been given nothing
// but the item of the last accepted snapshot.

#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "minibar/BarStatus.h"
#include "modeditors/EditorVariants.h"
#include "modeditors/EditorView.h"
#include "modeditors/RemoteModEditorHost.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QApplication>
#include <QCheckBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QVector>
#include <array>

namespace {

constexpr int steps = 40'000; // of each of the three walks
constexpr int itemCount = 3;

struct Item
{
    bool present = true;
    int kind = 0;
    int variant = 0;
};

// All that a snapshot says of the modulation.
struct World
{
    std::array<Item, itemCount> items = {{{true, 0, 0}, {true, 1, 0}, {true, 0, 1}}};
    int enabled = 0; // item; itemCount: none

    void change(Random& random)
    {
        Item& item = items[std::size_t(random.below(itemCount))];
        switch (random.below(12)) {
        case 0:
            item.present = !item.present;
            break;
        case 1:
            item.kind = random.oneIn(4) ? random.below(EditorVariants::kinds()) : item.kind;
            break;
        case 2:
        case 3:
            enabled = random.below(itemCount + 1);
            break;
        default:
            item.variant = random.below(EditorVariants::perKind);
            break;
        }
    }
    [[nodiscard]] QJsonObject snapshot(int sequence, const EditorVariants& pool) const
    {
        QJsonArray businesses;
        for (int i = 0; i < itemCount; ++i) {
            const Item& item = items[std::size_t(i)];
            const EditorVariants::Variant& variant = pool.variant(item.kind, item.variant);
            if (item.present) {
                businesses.append(QJsonObject{{QStringLiteral("id"), QString::number(i)},
                                              {QStringLiteral("text"), QStringLiteral("t")},
                                              {QStringLiteral("editorKind"), EditorVariants::kind(item.kind)},
                                              {QStringLiteral("revision"), i + 1},
                                              {QStringLiteral("editorState"), variant.state},
                                              {QStringLiteral("profile"), variant.profile}});
            }
        }
        const QJsonObject mod = {{QStringLiteral("enabled"), true},
                                 {QStringLiteral("enabledBusinessId"), QString::number(enabled)},
                                 {QStringLiteral("businesses"), businesses}};
        return {{QStringLiteral("seq"), sequence}, {QStringLiteral("mod"), mod}};
    }
};

// The program under test from the arrival of a snapshot to the leaving of a request, and the main process.
class Walk final
{
public:
    explicit Walk(quint32 seed)
        : m_random(seed)
        , m_pool(m_random)
    {
        QObject::connect(&m_host, &RemoteModEditorHost::changeRequested,
                         [this] { m_pending.append(++m_requests); });
        send(m_world, 1);
        select(0);
    }

    void step()
    {
        switch (m_random.below(16)) {
        case 0:
            select(m_random.below(itemCount));
            break;
        case 1:
        case 2:
            answer();
            break;
        case 3:
        case 4:
        case 5:
            if (!m_random.oneIn(4)) {
                m_world.change(m_random);
            }
            send(m_world, nextSequence());
            break;
        case 6:
            send(m_last, m_random.oneIn(2) ? m_sequence : 0); // nothing new
            break;
        default:
            tap();
            break;
        }
    }
    [[nodiscard]] QStringList shown() const
    {
        const auto* const editor = m_host.findChild<RemoteModEditor*>();
        return editor ? shownBy(*editor) : QStringList();
    }
    [[nodiscard]] const QStringList& expected()
    {
        return m_pool.shown(m_confirmed.kind, m_confirmed.variant, m_confirmedEnabled);
    }
    // Requests are made by taps only.
    [[nodiscard]] bool isRequestCountRight() const { return m_requests == m_expectedRequests; }
    [[nodiscard]] int requests() const { return m_requests; }
    [[nodiscard]] int accepted() const { return m_accepted; }
    [[nodiscard]] int refused() const { return m_refused; }

private:
    // Mostly the next one; an old one, or none, now and then.
    [[nodiscard]] int nextSequence()
    {
        if (m_random.oneIn(6)) {
            return m_random.oneIn(2) ? 0 : -m_random.below(3);
        }
        return m_random.oneIn(5) ? m_sequence - 1 - m_random.below(5) : m_sequence + m_random.below(3);
    }
    void send(const World& world, int sequence)
    {
        const bool taken = m_status.apply(world.snapshot(sequence, m_pool));
        const bool isOld = sequence > 0 && sequence < m_sequence;
        if (taken == isOld) {
            qFatal("the sequence rule is broken");
        }
        ++(isOld ? m_refused : m_accepted);
        if (isOld) {
            return;
        }
        m_sequence = qMax(m_sequence, sequence);
        m_last = world;
        show();
    }
    void select(int item)
    {
        if (m_last.items[std::size_t(item)].present) {
            m_selected = item;
            show();
        }
    }
    // As the popup does: an item that is gone leaves the editor as it was, unseen.
    void show()
    {
        for (const ModBusinessEntry& item : qAsConst(m_status.businesses)) {
            if (item.id == QString::number(m_selected)) {
                m_host.setModulationItem(item.id, item.name, item.text, item.editorState, item.editorKind,
                                         item.profile, item.revision, item.id == m_status.enabledBusinessId);
            }
        }
        if (m_last.items[std::size_t(m_selected)].present) {
            m_confirmed = m_last.items[std::size_t(m_selected)];
            m_confirmedEnabled = m_last.enabled == m_selected;
        }
    }
    // Error, time-out, or a payload, which counts only in the answer to the newest request.
    void answer()
    {
        if (m_pending.isEmpty()) {
            return;
        }
        const int id = m_pending.takeAt(m_random.below(m_pending.size()));
        if (id == m_requests && m_random.oneIn(2)) {
            m_world.change(m_random);
            send(m_world, nextSequence());
        }
    }

    void tap()
    {
        auto* const editor = m_host.findChild<RemoteModEditor*>();
        if (!editor) {
            return;
        }
        const auto widgets = editor->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        QWidget* const widget = widgets.at(m_random.below(widgets.size()));
        if (widget->isHidden() || !widget->isEnabled()) {
            return;
        }
        if (auto* const button = qobject_cast<SwitchButton*>(widget)) {
            m_expectedRequests += tapSwitch(button);
        } else if (auto* const picker = qobject_cast<EnumTextButton*>(widget)) {
            m_expectedRequests += choose(picker);
        } else if (auto* const value = qobject_cast<LabelButton*>(widget)) {
            m_expectedRequests += enter(editor, value);
        } else if (auto* const box = qobject_cast<QCheckBox*>(widget)) {
            box->click();
            ++m_expectedRequests;
        } else if (auto* const table = qobject_cast<QTableWidget*>(widget)) {
            m_expectedRequests += tapCell(table);
        }
    }
    [[nodiscard]] int tapSwitch(SwitchButton* button)
    {
        const bool on = m_random.oneIn(2);
        const bool differs = button->status() != on;
        button->findChild<QPushButton*>(on ? QStringLiteral("btnOn") : QStringLiteral("btnOff"))->click();
        return differs ? 1 : 0;
    }
    // What the open list does when an item is picked.
    [[nodiscard]] int choose(EnumTextButton* picker)
    {
        const int count = picker->enums().size();
        if (count == 0) {
            return 0;
        }
        const int index = m_random.below(count);
        picker->setCurrentEnum(index);
        emit picker->currentItemEdited(index);
        return 1;
    }
    // The keyboard opens for the field of the button, and is accepted or not.
    [[nodiscard]] int enter(RemoteModEditor* editor, LabelButton* button)
    {
        QString key;
        const auto opened = QObject::connect(&m_host, &RemoteModEditorHost::numericEditRequested,
                                             [&key](const QString& asked) { key = asked; });
        button->click();
        QObject::disconnect(opened);
        if (button->isReadOnly() || button->objectName() == QLatin1String("btnPeriodLen")) {
            return 0; // it only shows, and a request would be one too many
        }
        NumericFieldSpec spec;
        if (!m_host.describeNumericField(key, spec)) {
            qFatal("%s cannot be described", qPrintable(key));
        }
        m_host.setNumericFieldActive(key, true);
        if (!button->isChecked()) {
            qFatal("%s is not marked", qPrintable(key));
        }
        const bool accepted = m_random.oneIn(2);
        if (accepted) {
            editor->applyNumericValue(key, m_random.below(1000) / 8.0);
        }
        m_host.setNumericFieldActive(key, false);
        return accepted ? 1 : 0;
    }
    [[nodiscard]] int tapCell(QTableWidget* table)
    {
        if (table->rowCount() == 0) {
            return 0;
        }
        const int column = m_random.below(table->columnCount());
        emit table->cellClicked(m_random.below(table->rowCount()), column);
        return column == 2 ? 1 : 0;
    }

    Random m_random;
    EditorVariants m_pool;
    BarStatus m_status;
    RemoteModEditorHost m_host;
    World m_world; // of the main process
    World m_last;  // of the last accepted snapshot
    int m_sequence = 0;
    int m_selected = 0;
    Item m_confirmed;
    bool m_confirmedEnabled = false;
    QVector<int> m_pending;
    int m_requests = 0;
    int m_expectedRequests = 0;
    int m_accepted = 0;
    int m_refused = 0;
};

} // namespace

class EditorsWalkTest final : public QObject
{
    Q_OBJECT

private slots:
    void showsOnlyWhatIsConfirmed_data();
    void showsOnlyWhatIsConfirmed();
};

void EditorsWalkTest::showsOnlyWhatIsConfirmed_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::newRow("seed 1") << 1U;
    QTest::newRow("seed 20240229") << 20240229U;
    QTest::newRow("seed 4294967295") << 4294967295U;
}

void EditorsWalkTest::showsOnlyWhatIsConfirmed()
{
    QFETCH(const quint32, seed);
    Walk walk(seed);
    for (int step = 0; step < steps; ++step) {
        walk.step();
        const bool right = walk.shown() == walk.expected() && walk.isRequestCountRight();
        if (!right) {
            qInfo("seed %u, step %d", seed, step);
            QCOMPARE(walk.shown(), walk.expected());
            QVERIFY(walk.isRequestCountRight());
        }
    }
    // The walk has been everywhere.
    QVERIFY(walk.requests() > steps / 10);
    QVERIFY(walk.accepted() > steps / 10);
    QVERIFY(walk.refused() > steps / 100);
}

QTEST_MAIN(EditorsWalkTest)

#include "tst_editors_walk.moc"
