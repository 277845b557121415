#include "controls/SwitchButton.h"
#include "modeditors/ModEditorFactory.h"
#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"

#include <QFile>
#include <QJsonObject>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

// What leaves the editor.
class QuickLoadSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void buttonSendsTheSelectedFile();
    void keySendsTheSelectedFile();
    void nothingToSend();
    void doubleClickSendsTheFile();
    void otherButtonsSendNothing();
    void clickOnARowSendsNothing();
    void notWhileLoading();
    void autoScaleSnapsBack_data();
    void autoScaleSnapsBack();
    void enableSnapsBack_data();
    void enableSnapsBack();
    void editorMayGoWhileItSends();

private:
    [[nodiscard]] QJsonObject sent(const QString& name) const
    {
        return {{QStringLiteral("path"), m_fixture->path(name)}};
    }

    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickLoadSuite::init()
{
    m_fixture = std::make_unique<QuickFixture>();
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    m_fixture->addWaveform(QStringLiteral("B.WAV"));
    m_fixture->addFolder(QStringLiteral("folder"));
    m_fixture->apply();
}

void QuickLoadSuite::buttonSendsTheSelectedFile()
{
    m_fixture->click(QStringLiteral("B"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    const QStringList shown = m_fixture->editor.shown();
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(m_fixture->editor.edit(0).action, QStringLiteral("select-file"));
    QCOMPARE(m_fixture->editor.edit(0).arguments, sent(QStringLiteral("B.WAV")));
    QCOMPARE(m_fixture->editor.shown(), shown);
}

void QuickLoadSuite::keySendsTheSelectedFile()
{
    m_fixture->click(QStringLiteral("a"));
    auto* const load = m_fixture->editor.find<QPushButton>(QStringLiteral("btnLoad"));
    load->setFocus();
    QTest::keyClick(load, Qt::Key_Space);
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(m_fixture->editor.lastArguments(), sent(QStringLiteral("a.wav")));
}

void QuickLoadSuite::nothingToSend()
{
    m_fixture->editor.click(QStringLiteral("btnLoad")); // nothing is selected
    m_fixture->click(QStringLiteral("a"));
    QVERIFY(QFile::remove(m_fixture->path(QStringLiteral("a.wav"))));
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    m_fixture->doubleClick(QStringLiteral("a"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("folder|B"));
    QCOMPARE(m_fixture->selected(), QString());
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLoadSuite::doubleClickSendsTheFile()
{
    m_fixture->doubleClick(QStringLiteral("a"));
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(m_fixture->editor.edit(0).action, QStringLiteral("select-file"));
    QCOMPARE(m_fixture->editor.edit(0).arguments, sent(QStringLiteral("a.wav")));
    QVERIFY(!m_fixture->table().findChild<QLineEdit*>()); // nothing is edited in place
}

void QuickLoadSuite::otherButtonsSendNothing()
{
    QTableWidget& table = m_fixture->table();
    const QPoint place = table.visualItemRect(table.item(m_fixture->rowOf(QStringLiteral("a")), 0)).center();
    const QPoint folder =
        table.visualItemRect(table.item(m_fixture->rowOf(QStringLiteral("folder")), 0)).center();
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(table.viewport(), button, {}, place);
        QTest::mouseDClick(table.viewport(), button, {}, place);
        QTest::mouseRelease(table.viewport(), button, {}, place);
        QTest::mouseClick(table.viewport(), button, {}, folder);
    }
    QCOMPARE(m_fixture->names(), QStringLiteral("folder|B|a"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLoadSuite::clickOnARowSendsNothing()
{
    m_fixture->apply({}, {{QStringLiteral("autoScale"), true}}, true);
    const QStringList before = m_fixture->editor.shown().filter(QStringLiteral("btn"));
    for (const char* name : {"a", "B", "folder", ".."}) {
        m_fixture->click(QLatin1String(name));
    }
    QCOMPARE(m_fixture->editor.shown().filter(QStringLiteral("btn")), before);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLoadSuite::notWhileLoading()
{
    m_fixture->click(QStringLiteral("a"));
    m_fixture->apply({{QStringLiteral("loadInProgress"), true}});
    QCOMPARE(m_fixture->selected(), QStringLiteral("a"));
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLoadSuite::autoScaleSnapsBack_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("switched on") << true;
    QTest::newRow("switched off") << false;
}

void QuickLoadSuite::autoScaleSnapsBack()
{
    QFETCH(const bool, on);
    m_fixture->apply({}, {{QStringLiteral("autoScale"), !on}});
    m_fixture->editor.clickHalf(QStringLiteral("btnAutoScale"), on);
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(m_fixture->editor.edit(0).action, QStringLiteral("set-field"));
    const QJsonObject expected = {{QStringLiteral("key"), QStringLiteral("autoScale")},
                                  {QStringLiteral("value"), on}};
    QCOMPARE(m_fixture->editor.edit(0).arguments, expected);
    QCOMPARE(m_fixture->editor.find<SwitchButton>(QStringLiteral("btnAutoScale"))->status(), !on);
}

void QuickLoadSuite::enableSnapsBack_data()
{
    autoScaleSnapsBack_data();
}

void QuickLoadSuite::enableSnapsBack()
{
    QFETCH(const bool, on);
    m_fixture->apply({{QStringLiteral("loadedFilePath"), m_fixture->path(QStringLiteral("a.wav"))}}, {}, !on);
    bool told = !on;
    connect(&m_fixture->editor.editor(), &RemoteModEditor::enabledEdited, this,
            [&] { told = m_fixture->editor.editor().isModulationEnabled(); });
    m_fixture->editor.clickHalf(QStringLiteral("enabled"), on);
    QCOMPARE(m_fixture->editor.enables.count(), 1);
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(told, on);
    QCOMPARE(m_fixture->editor.editor().isModulationEnabled(), !on);
}

void QuickLoadSuite::editorMayGoWhileItSends()
{
    auto* const editor = createModEditor(QStringLiteral("quick-waveform"), nullptr);
    const QPointer<RemoteModEditor> guard(editor);
    editor->applyEditorState({}, {{QStringLiteral("rootPath"), m_fixture->path()}}, false);
    connect(editor, &RemoteModEditor::actionEdited, this, [editor] { editor->deleteLater(); });
    auto* const table = editor->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
    table->setCurrentCell(1, 0);
    QTest::mouseClick(editor->findChild<QPushButton*>(QStringLiteral("btnLoad")), Qt::LeftButton);
    QTRY_VERIFY(!guard);
}

std::unique_ptr<QObject> makeQuickLoadSuite()
{
    return std::make_unique<QuickLoadSuite>();
}

#include "QuickLoadSuite.moc"
