// Every control of every editor, from the click to the line on the socket and back: with the real helper on a
// real screen. The window manager comes in TARVINEL_WINDOW_MANAGER.

#include "support/Waiting.h"
#include "system/BarSession.h"
#include "system/EditorItems.h"
#include "system/EditorRows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QTest>

using namespace TestSupport;

namespace {

QJsonValue parsed(const char* json)
{
    const QByteArray array = QByteArray("[") + json + ']';
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(array, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON: %s", json);
    return document.array().first();
}

// Everything after the name of the command.
QJsonObject expectedArguments(const EditorRow& row, int revision)
{
    QJsonObject request{{QStringLiteral("businessId"), QLatin1String(row.editor)},
                        {QStringLiteral("expectedRevision"), revision}};
    const QString action = QLatin1String(row.action);
    if (action.isEmpty()) {
        request.insert(QStringLiteral("enabled"), parsed(row.value));
        return request;
    }
    const QJsonObject arguments = action == QLatin1String("set-field")
                                      ? QJsonObject{{QStringLiteral("key"), QLatin1String(row.key)},
                                                    {QStringLiteral("value"), parsed(row.value)}}
                                      : QJsonObject{{QLatin1String(row.key), parsed(row.value)}};
    request.insert(QStringLiteral("action"), action);
    request.insert(QStringLiteral("args"), arguments);
    return request;
}

QJsonObject confirmation(const EditorRow& row)
{
    if (row.confirmed)
        return parsed(row.confirmed).toObject();
    return {{QStringLiteral("editorState"), QJsonObject{{QLatin1String(row.key), parsed(row.value)}}}};
}

} // namespace

Q_DECLARE_METATYPE(const EditorRow*)
Q_DECLARE_METATYPE(const LockedRow*)

class TestEditorFields final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void everyRowIsAnother();
    void numbers_data();
    void numbers();
    void controls_data();
    void controls();
    void locked_data();
    void locked();
    void toneMarks();

private:
    void addRows(const QVector<EditorRow>& rows) const;
    // The editor is open and shows the item as it is at first.
    [[nodiscard]] bool begin(const QString& editor);
    void confirmInTheEnd(const EditorRow& row);

    PrivateDisplay m_display{qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"))};
    Accessibility m_accessibility{m_display};
    // One helper for all rows, but a new one after a row that has failed.
    struct Session
    {
        Session(const PrivateDisplay& display, const Accessibility& accessibility)
            : bar(display, accessibility)
            , editor(bar, accessibility)
        {}
        BarSession bar;
        EditorView editor;
        EditorItems items;
        QString shown; // id of the item whose editor is open
    };
    std::optional<Session> m_session;
};

void TestEditorFields::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestEditorFields::cleanup()
{
    if (!QTest::currentTestFailed())
        return;
    if (m_session && qEnvironmentVariableIsSet("TARVINEL_PICTURES"))
        (void)m_session->bar.desktop().saveScreen(qEnvironmentVariable("TARVINEL_PICTURES"));
    m_session.reset();
}

bool TestEditorFields::begin(const QString& editor)
{
    const bool isNew = !m_session;
    if (isNew)
        m_session.emplace(m_display, m_accessibility);
    Session& session = *m_session;
    if (isNew && (!session.bar.begin() || !session.bar.expand()))
        return false;
    session.bar.main().sendSnapshot(session.items.firstState());
    if (!session.bar.main().show() || session.shown == editor)
        return session.shown == editor;
    session.shown.clear();
    const QStringList ids = session.items.ids();
    if (!session.editor.open(ids.indexOf(editor), ids.size(), EditorItems::title(editor)))
        return false;
    session.shown = editor;
    return true;
}

void TestEditorFields::addRows(const QVector<EditorRow>& rows) const
{
    QTest::addColumn<const EditorRow*>("row");
    for (const EditorRow& row : rows)
        QTest::addRow("%s: %s", row.editor, row.control) << &row;
}

// A row is thus a control, and none is there twice.
void TestEditorFields::everyRowIsAnother()
{
    QSet<QString> names;
    for (const EditorRow& row : numericRows() + controlRows())
        names += QLatin1String(row.editor) + QLatin1String(row.control);
    QCOMPARE(names.size(), numericRows().size() + controlRows().size());
}

void TestEditorFields::confirmInTheEnd(const EditorRow& row)
{
    QVERIFY2(begin(QLatin1String(row.editor)), "the editor does not open");
    Session& session = *m_session;
    FakeMain& main = session.bar.main();
    const QString control = QLatin1String(row.control);
    QVERIFY2(session.editor.waitForShown(control, QString::fromUtf8(row.before)),
             qPrintable(session.editor.shown(control)));

    const int before = main.requests().size();
    QVERIFY(session.editor.perform(row.gesture, control, QString::fromUtf8(row.text)));
    QVERIFY(main.waitForRequests(before + 1));
    const QJsonObject request = main.requests().last();
    QCOMPARE(request.value(QLatin1String("cmd")).toString(), QStringLiteral("SOUR:MOD:CONF"));
    QVERIFY2(request.value(QLatin1String("args")) == expectedArguments(row, session.items.revision()),
             main.lines().last().raw.constData());

    main.answer(request.value(QLatin1String("id")).toInt(), true);
    QVERIFY(main.show()); // nothing more has been said until then
    QCOMPARE(session.editor.shown(control), QString::fromUtf8(row.before));
    main.sendSnapshot(session.items.changed(session.shown, confirmation(row)));
    QVERIFY2(session.editor.waitForShown(control, QString::fromUtf8(row.after)),
             qPrintable(session.editor.shown(control)));
    QVERIFY(main.show());
    QCOMPARE(main.requests().size(), before + 1);
}

void TestEditorFields::numbers_data()
{
    addRows(numericRows());
}

void TestEditorFields::numbers()
{
    QFETCH(const EditorRow*, row);
    confirmInTheEnd(*row);
}

void TestEditorFields::controls_data()
{
    addRows(controlRows());
}

void TestEditorFields::controls()
{
    QFETCH(const EditorRow*, row);
    confirmInTheEnd(*row);
}

void TestEditorFields::locked_data()
{
    QTest::addColumn<const LockedRow*>("row");
    for (const LockedRow& row : lockedRows())
        QTest::addRow("%s: %s", row.editor, row.difference) << &row;
}

void TestEditorFields::locked()
{
    QFETCH(const LockedRow*, row);
    QVERIFY2(begin(QLatin1String(row->editor)), "the editor does not open");
    Session& session = *m_session;
    FakeMain& main = session.bar.main();
    main.sendSnapshot(session.items.changed(session.shown, parsed(row->difference).toObject()));
    QVERIFY(main.show());
    const int before = main.requests().size();
    for (const char* control : row->controls) {
        QVERIFY2(session.editor.click(QLatin1String(control)), control);
        QVERIFY(main.show() && main.show());
        QVERIFY2(session.bar.shownBeside() == QStringList(session.editor.title()), control);
    }
    QCOMPARE(main.requests().size(), before);
}

// A mark shows nothing new before it is confirmed, and each click sends all tones that are then on.
void TestEditorFields::toneMarks()
{
    QVERIFY2(begin(QStringLiteral("multitone")), "the editor does not open");
    Session& session = *m_session;
    FakeMain& main = session.bar.main();
    const auto send = [&](const char* difference) {
        main.sendSnapshot(session.items.changed(session.shown, parsed(difference).toObject()));
        QVERIFY(main.show());
    };
    constexpr char oneTone[] = R"({"profile":{"discreteKeepToneMode":true}})";
    constexpr char twoTones[] = R"({"profile":{"discreteKeepToneMode":true,"candidateTones":[
        {"requestedFrequency":1e6,"latticeIndex":2,"enabled":true},
        {"requestedFrequency":2e6,"latticeIndex":4,"enabled":true},
        {"requestedFrequency":3e6,"latticeIndex":7}]}})";
    send(oneTone);
    const QPoint mark = session.editor.cell(QStringLiteral("Enabled"), QStringLiteral("2MHz"));
    const int before = main.requests().size();
    QVERIFY(session.bar.click(session.editor.cell(QStringLiteral("Tone Num"), QStringLiteral("2MHz"))));
    QVERIFY(session.bar.click(mark));
    QVERIFY(main.waitForRequests(before + 1));
    const auto tones = [&main]() -> QString {
        const QJsonObject args = main.requests().last().value(QLatin1String("args")).toObject();
        return args.value(QLatin1String("action")).toString() + QLatin1Char(' ') +
               QString::fromUtf8(QJsonDocument(args.value(QLatin1String("args")).toObject())
                                     .toJson(QJsonDocument::Compact));
    };
    QCOMPARE(tones(), QStringLiteral(R"(set-enabled-tones {"value":[2,4]})"));
    QRect place(QPoint(), QSize(40, 40));
    place.moveCenter(mark);
    const Desktop& desktop = session.bar.desktop();
    QVERIFY(main.show());
    QVERIFY(desktop.waitForCalm(place));
    const QImage off = desktop.x().grab(place);
    send(twoTones);
    QTRY_VERIFY(desktop.x().grab(place) != off);
    send(oneTone);
    QTRY_VERIFY(desktop.x().grab(place) == off);
    QVERIFY(session.bar.click(session.editor.cell(QStringLiteral("Enabled"), QStringLiteral("1MHz"))));
    QVERIFY(main.waitForRequests(before + 2));
    QCOMPARE(tones(), QStringLiteral(R"(set-enabled-tones {"value":[]})"));
}

QTEST_GUILESS_MAIN(TestEditorFields)

#include "tst_editor_fields.moc"
