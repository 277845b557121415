#include "controls/OpenPath.h"
#include "controls/OpenedChooser.h"

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using Controls::getOpenPath;

namespace {

const QString wavFilter = QStringLiteral("WAV Files (*.wav)");

QStringList entriesBelow(const QString& folder)
{
    QStringList entries;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        entries.append(walk.next());
    entries.sort();
    return entries;
}

} // namespace

// The choice of a file. HOME is a temporary folder: see main().
class TestOpenPath final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void typedNameIsChosen_data();
    void typedNameIsChosen();
    void clickedFileIsChosen();
    void missingFileIsNotChosen();
    void folderIsChosen();
    void nothingIsChosen();
    void startsInTheFolder();
    void showsOnlyWhatTheFilterLets();
    void nothingCanBeChangedOnTheDisk();
    void remembersNothingOnTheDisk();
    void othersKeepTheirSettings();
    void isWhollyOnTheScreen();
    void staysOnTop();
    void everyControlHasAName();
    void parentHidesMeanwhile();
    void parentGoesMeanwhile();
    void worksWithoutParent();
    void programEndsMeanwhile(); // the last: no event loop runs afterwards

private:
    QTemporaryDir m_folder;
    QString m_wav;
};

void TestOpenPath::initTestCase()
{
    // The toolkit asks what lies under the pointer when a modal window closes, and complains when it is one
    // that the window manager is taking away.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    QVERIFY(m_folder.isValid());
    m_wav = m_folder.filePath(QStringLiteral("tone.wav"));
    for (const char* name : {"tone.wav", "LOUD.WAV", "notes.txt"}) {
        QFile file(m_folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("inner")));
}

void TestOpenPath::typedNameIsChosen_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("name") << QStringLiteral("tone.wav");
    QTest::newRow("path") << m_wav;
    QTest::newRow("roundabout") << QStringLiteral("inner/../tone.wav");
}

void TestOpenPath::typedNameIsChosen()
{
    QFETCH(const QString, typed);
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        nameField(chooser)->setText(typed);
        QTest::keyClick(nameField(chooser), Qt::Key_Return);
    });
    const QString chosen = getOpenPath(m_folder.path(), false, QStringLiteral("Choose"), wavFilter);
    QCOMPARE(QDir::cleanPath(chosen), m_wav);
}

void TestOpenPath::clickedFileIsChosen()
{
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        auto* const list = chooser->findChild<QListView*>(QStringLiteral("listView"));
        const auto row = [list] {
            const QModelIndexList found = list->model()->match(list->model()->index(0, 0, list->rootIndex()),
                                                               Qt::DisplayRole, QStringLiteral("tone.wav"));
            return found.value(0);
        };
        QTRY_VERIFY(row().isValid());
        list->scrollTo(row());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(row()).center());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(row()).center());
    });
    QCOMPARE(getOpenPath(m_folder.path(), false, QString(), wavFilter), m_wav);
}

void TestOpenPath::missingFileIsNotChosen()
{
    bool refused = false;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        QTimer::singleShot(0, chooser, [&refused, chooser] {
            QTRY_VERIFY(QApplication::activeModalWidget() != chooser); // it says so
            refused = true;
            QTRY_VERIFY(QApplication::activeModalWidget()->isActiveWindow());
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            QTRY_VERIFY(chooser->isActiveWindow());
            chooser->reject();
        });
        nameField(chooser)->setText(QStringLiteral("/nowhere/at all.wav"));
        QTest::keyClick(nameField(chooser), Qt::Key_Return);
    });
    QCOMPARE(getOpenPath(m_folder.path()), QString());
    QVERIFY(refused);
}

void TestOpenPath::folderIsChosen()
{
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        QCOMPARE(chooser->fileMode(), QFileDialog::Directory);
        nameField(chooser)->setText(QStringLiteral("inner"));
        QTest::keyClick(nameField(chooser), Qt::Key_Return);
    });
    QCOMPARE(getOpenPath(m_folder.path(), true), m_folder.filePath(QStringLiteral("inner")));
}

void TestOpenPath::nothingIsChosen()
{
    const ChooserVisitor visitor([](QFileDialog* chooser) { QTest::keyClick(chooser, Qt::Key_Escape); });
    QCOMPARE(getOpenPath(m_folder.path()), QString());
    QVERIFY(visitor.met);
}

void TestOpenPath::startsInTheFolder()
{
    for (const QString& folder :
         {m_folder.path(), m_folder.filePath(QStringLiteral("inner")), QDir::rootPath()}) {
        QString seen;
        const ChooserVisitor visitor([&](QFileDialog* chooser) {
            seen = chooser->directory().absolutePath();
            chooser->setDirectory(QDir::rootPath()); // where it ends is not where the next one starts
            chooser->reject();
        });
        (void)getOpenPath(folder);
        QCOMPARE(seen, folder);
    }
}

void TestOpenPath::showsOnlyWhatTheFilterLets()
{
    QStringList shown;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto* const list = chooser->findChild<QListView*>(QStringLiteral("listView"));
        const auto rows = [list] {
            QStringList names;
            for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
                names.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
            names.sort();
            return names;
        };
        [&] { QTRY_COMPARE(rows().size(), 3); }();
        shown = rows();
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path(), false, QString(), wavFilter);
    QCOMPARE(shown,
             (QStringList{QStringLiteral("LOUD.WAV"), QStringLiteral("inner"), QStringLiteral("tone.wav")}));
}

void TestOpenPath::nothingCanBeChangedOnTheDisk()
{
    bool readOnly = false;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto* const newFolder = chooser->findChild<QToolButton*>(QStringLiteral("newFolderButton"));
        readOnly =
            chooser->testOption(QFileDialog::ReadOnly) && !(newFolder->isVisible() && newFolder->isEnabled());
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    QVERIFY(readOnly);
}

void TestOpenPath::remembersNothingOnTheDisk()
{
    // What would be written, and where, if nothing were done about it.
    QVERIFY(
        QSettings(QSettings::UserScope, QStringLiteral("QtProject")).fileName().startsWith(QDir::homePath()));
    QVERIFY(m_folder.path() != QDir::homePath());
    const QStringList before = entriesBelow(QDir::homePath());
    for (bool choose : {true, false}) {
        const ChooserVisitor visitor([&](QFileDialog* chooser) {
            nameField(chooser)->setText(m_wav);
            choose ? QTest::keyClick(nameField(chooser), Qt::Key_Return) : chooser->reject();
        });
        QCOMPARE(getOpenPath(m_folder.path()).isEmpty(), !choose);
    }
    auto* const parent = new QWidget;
    const ChooserVisitor visitor([parent](QFileDialog*) { delete parent; });
    (void)getOpenPath(m_folder.path(), false, QString(), wavFilter, parent);
    QCOMPARE(entriesBelow(QDir::homePath()), before);
    QCOMPARE(entriesBelow(QCoreApplication::applicationDirPath()),
             QStringList{QCoreApplication::applicationFilePath()});
}

void TestOpenPath::othersKeepTheirSettings()
{
    const auto place = [] { return QSettings(QSettings::UserScope, QStringLiteral("Someone")).fileName(); };
    const QString before = place();
    const ChooserVisitor visitor([](QFileDialog* chooser) { chooser->reject(); });
    (void)getOpenPath(m_folder.path());
    QCOMPARE(place(), before);
}

void TestOpenPath::isWhollyOnTheScreen()
{
    QWidget parent;
    parent.setGeometry(parent.screen()->geometry().right() - 100, 20, 90, 300);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    bool whole = false;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        whole = chooser->screen()->availableGeometry().contains(chooser->frameGeometry());
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path(), false, QString(), wavFilter, &parent);
    QVERIFY(whole);
}

void TestOpenPath::staysOnTop()
{
    Qt::WindowFlags flags;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        flags = chooser->windowFlags();
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    QVERIFY(flags & Qt::WindowStaysOnTopHint);
    QVERIFY((flags & Qt::WindowType_Mask) == Qt::Dialog);
}

void TestOpenPath::everyControlHasAName()
{
    QStringList nameless;
    int controls = 0;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto widgets = chooser->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
                qobject_cast<QLineEdit*>(widget->parentWidget()))
                continue;
            QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(widget);
            ++controls;
            if (!accessible || accessible->text(QAccessible::Name).isEmpty())
                nameless.append(QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') +
                                widget->objectName());
        }
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path(), false, QString(), wavFilter);
    QVERIFY(controls > 5);
    QCOMPARE(nameless, QStringList());
}

void TestOpenPath::parentHidesMeanwhile()
{
    QWidget window;
    QWidget parent(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        nameField(chooser)->setText(m_wav);
        window.hide();
    });
    QCOMPARE(getOpenPath(m_folder.path(), false, QString(), wavFilter, &parent), QString());
    QVERIFY(visitor.met);
    QVERIFY(parent.findChildren<QFileDialog*>().isEmpty());
}

void TestOpenPath::parentGoesMeanwhile()
{
    auto* const parent = new QWidget;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        nameField(chooser)->setText(m_wav);
        delete parent;
    });
    QCOMPARE(getOpenPath(m_folder.path(), false, QString(), wavFilter, parent), QString());
    QVERIFY(visitor.met);
}

void TestOpenPath::programEndsMeanwhile()
{
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        nameField(chooser)->setText(m_wav);
        QCoreApplication::quit();
    });
    QCOMPARE(getOpenPath(m_folder.path(), false, QString(), wavFilter), QString());
    QVERIFY(visitor.met);
}

void TestOpenPath::worksWithoutParent()
{
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        nameField(chooser)->setText(m_wav);
        QTest::keyClick(nameField(chooser), Qt::Key_Return);
    });
    QCOMPARE(getOpenPath(m_folder.path(), false, QString(), wavFilter, nullptr, {}), m_wav);
}

// The toolkit asks for the user's folders once, at its start.
int main(int argc, char* argv[])
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qunsetenv(name);
    QApplication application(argc, argv);
    TestOpenPath test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_open_path.moc"
