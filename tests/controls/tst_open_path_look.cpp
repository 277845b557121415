#include "controls/OpenPath.h"
#include "controls/OpenedChooser.h"

#include <QCursor>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using Controls::getOpenPath;

namespace {

const QString wavFilter = QStringLiteral("WAV Files (*.wav)");

QRect placeOf(const QWidget* widget)
{
    return {widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()};
}

QString themeSheet()
{
    QFile file(QStringLiteral(CONFIGURATION_DIR "/theme_light.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

// What is seen of the choice of a file.
class TestOpenPathLook final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { qApp->setStyleSheet(QString()); }
    void iconsAreTheKits();
    void controlsStandInLine();
    void placesAreShortened();
    void fieldsAreNamedInOurWords();
    void onlyWaysAreOffered();

private:
    QTemporaryDir m_folder;
};

void TestOpenPathLook::initTestCase()
{
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight()); // nothing is hovered
    QVERIFY(m_folder.isValid());
    QFile file(m_folder.filePath(QStringLiteral("tone.wav")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("inner")));
}

void TestOpenPathLook::iconsAreTheKits()
{
    QStringList names;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto buttons = chooser->findChildren<QToolButton*>();
        for (const QToolButton* button : buttons)
            if (button->isVisible())
                names.append(button->icon().name());
        const auto* const model = chooser->findChild<QListView*>(QStringLiteral("listView"))->model();
        const QModelIndex here = chooser->findChild<QListView*>(QStringLiteral("listView"))->rootIndex();
        [&] { QTRY_COMPARE(model->rowCount(here), 2); }();
        for (int row = 0; row < model->rowCount(here); ++row)
            names.append(model->index(row, 0, here).data(Qt::DecorationRole).value<QIcon>().name());
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    QCOMPARE(names.size(), 5); // three buttons, a folder and a file
    for (const QString& name : qAsConst(names)) {
        QVERIFY2(name.startsWith(QLatin1String(":/Controls/Image/")), qPrintable(name));
        QVERIFY2(QFile::exists(name), qPrintable(name));
    }
}

void TestOpenPathLook::controlsStandInLine()
{
    constexpr int high = 44;
    constexpr int gap = 8;
    qApp->setStyleSheet(themeSheet());
    QRect folder, up, name, type, open, cancel, places, files;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto* const buttons = chooser->findChild<QDialogButtonBox*>();
        const auto at = [chooser](const char* widget) {
            return placeOf(chooser->findChild<QWidget*>(QLatin1String(widget)));
        };
        folder = at("lookInCombo");
        up = at("toParentButton");
        name = at("fileNameEdit");
        type = at("fileTypeCombo");
        places = at("sidebar");
        files = at("listView");
        open = placeOf(buttons->button(QDialogButtonBox::Open));
        cancel = placeOf(buttons->button(QDialogButtonBox::Cancel));
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path(), false, QString(), wavFilter);
    for (const QRect& control : {folder, up, name, type, open, cancel})
        QCOMPARE(control.height(), high);
    QCOMPARE(up.width(), high);
    QCOMPARE(up.top(), folder.top());
    QCOMPARE(open.top(), name.top());
    QCOMPARE(cancel.top(), type.top());
    QCOMPARE(places.top() - folder.bottom() - 1, gap);
    QCOMPARE(files.left() - places.right() - 1, gap);
    QCOMPARE(name.top() - files.bottom() - 1, gap);
    QCOMPARE(type.top() - name.bottom() - 1, gap);
    QCOMPARE(open.left() - name.right() - 1, gap);
}

void TestOpenPathLook::placesAreShortened()
{
    const QString home =
        m_folder.filePath(QStringLiteral("a home with a name that is far too long for the list"));
    QVERIFY(QDir().mkpath(home));
    int rows = 0;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        chooser->setSidebarUrls({QUrl::fromLocalFile(home)});
        const auto* const list = chooser->findChild<QListView*>(QStringLiteral("sidebar"));
        rows = list->model()->rowCount();
        QTRY_COMPARE(list->visualRect(list->model()->index(0, 0)).width(), list->viewport()->width());
        QCOMPARE(list->textElideMode(), Qt::ElideMiddle);
        QVERIFY(!list->horizontalScrollBar()->isVisible());
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    QCOMPARE(rows, 1);
    QVERIFY(QDir(home).removeRecursively());
}

void TestOpenPathLook::fieldsAreNamedInOurWords()
{
    QStringList names;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        for (const char* label : {"fileNameLabel", "fileTypeLabel"})
            names.append(chooser->findChild<QLabel*>(QLatin1String(label))->text());
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    QCOMPARE(names, (QStringList{QStringLiteral("File name:"), QStringLiteral("Files of type:")}));
}

// There is one view of the files, and one size of the window.
void TestOpenPathLook::onlyWaysAreOffered()
{
    QStringList offered;
    bool hasGrip = true;
    const ChooserVisitor visitor([&](QFileDialog* chooser) {
        const auto buttons = chooser->findChildren<QToolButton*>();
        for (const QToolButton* button : buttons)
            if (button->isVisible())
                offered.append(button->objectName());
        hasGrip = chooser->isSizeGripEnabled();
        chooser->reject();
    });
    (void)getOpenPath(m_folder.path());
    offered.sort();
    QCOMPARE(offered, (QStringList{QStringLiteral("backButton"), QStringLiteral("forwardButton"),
                                   QStringLiteral("toParentButton")}));
    QVERIFY(!hasGrip);
}

// The toolkit asks for the user's folders once, at its start.
int main(int argc, char* argv[])
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    QApplication application(argc, argv);
    TestOpenPathLook test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_open_path_look.moc"
