#include "formeditors/FormFixture.h"
#include "support/Translators.h"
#include "utils/WavBytes.h"

#include <QAbstractButton>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace {

const QString chosenPath = QStringLiteral("/etc/hostname"); // any file that is there

const char* loadButton(const QString& kind)
{
    return kind == QLatin1String("playback") ? "btnLoad" : "Load";
}

} // namespace

// How the editors let the user choose a file, and what becomes of the choice.
class FileChoiceSuite final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    } // off the choosers that come and go
    void chooserAsksForWavFiles_data() { kinds(); }
    void chooserAsksForWavFiles();
    void textsAreTranslated_data() { kinds(); }
    void textsAreTranslated();
    void choiceIsSentOnce_data() { kinds(); }
    void choiceIsSentOnce();
    void typedPathIsChosen_data() { kinds(); }
    void typedPathIsChosen();
    void nothingChosenSendsNothing_data() { kinds(); }
    void nothingChosenSendsNothing();
    void streamingAppendsToTheListAsItIsThen();
    void editorHiddenMeanwhile_data() { kinds(); }
    void editorHiddenMeanwhile();
    void editorGoneMeanwhile_data() { kinds(); }
    void editorGoneMeanwhile();
    void editorGoneWithTheEdit_data() { kinds(); }
    void editorGoneWithTheEdit();

private:
    static void kinds();
    // Clicks the load button and does something with the chooser once it has the keyboard. False if none did.
    static bool withChooser(const FormFixture& fixture, const QString& kind,
                            const std::function<void(QFileDialog*)>& act)
    {
        bool acted = false;
        QTimer timer;
        timer.setInterval(5);
        connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* const chooser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (chooser && chooser->isActiveWindow()) {
                timer.stop();
                acted = true;
                act(chooser);
            }
        });
        timer.start();
        QTest::mouseClick(fixture.find<QAbstractButton>(loadButton(kind)), Qt::LeftButton);
        return acted;
    }
};

void FileChoiceSuite::kinds()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("playback") << QStringLiteral("playback");
    QTest::newRow("streaming") << QStringLiteral("streaming");
}

void FileChoiceSuite::chooserAsksForWavFiles()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    const QString data = QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../data"));
    QVERIFY(!QFileInfo::exists(data) || QDir(data).removeRecursively());
    QVERIFY(withChooser(fixture, kind, [&](QFileDialog* chooser) {
        QCOMPARE(chooser->windowTitle(), kind == QLatin1String("playback")
                                             ? QStringLiteral("Select WAV/ARB file")
                                             : QStringLiteral("Select WAV file"));
        QCOMPARE(chooser->nameFilters(), QStringList{QStringLiteral("WAV Files (*.wav)")});
        QCOMPARE(chooser->directory().absolutePath(), data);
        QCOMPARE(chooser->fileMode(), QFileDialog::ExistingFile);
        QVERIFY(fixture.find<QAbstractButton>(loadButton(kind))->isChecked());
        chooser->reject();
    }));
    QVERIFY(QFileInfo(data).isDir());
}

void FileChoiceSuite::textsAreTranslated()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    TestSupport::RecordingTranslator recorder;
    QVERIFY(QCoreApplication::installTranslator(&recorder));
    const bool opened = withChooser(fixture, kind, [](QFileDialog* chooser) { chooser->reject(); });
    QCoreApplication::removeTranslator(&recorder);
    QVERIFY(opened);
    const QString context = QLatin1String(expectedForm(kind).className) + QLatin1Char('|');
    QVERIFY(recorder.asked.contains(context + QStringLiteral("Select %1 file")));
    QVERIFY(recorder.asked.contains(context + QStringLiteral("WAV Files (*.wav)")));
}

void FileChoiceSuite::choiceIsSentOnce()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    fixture.apply(R"({"FileName":"/data/old.wav","FileList":["/data/old.wav",""]})");
    QVERIFY(fixture.show());
    const QStringList before = fixture.everything();
    QVERIFY(withChooser(fixture, kind, [](QFileDialog* chooser) {
        chooser->setNameFilter(QStringLiteral("All (*)"));
        chooser->selectFile(chosenPath);
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosenPath);
        static_cast<QDialog*>(chooser)->accept();
    }));
    QCOMPARE(fixture.setField(),
             kind == QLatin1String("playback")
                 ? json(R"({"key":"FileName","value":"/etc/hostname"})")
                 : json(R"({"key":"FileList","value":["/data/old.wav","/etc/hostname"]})"));
    QVERIFY(!fixture.find<QAbstractButton>(loadButton(kind))->isChecked());
    QCOMPARE(fixture.everything(), before); // until it is confirmed
}

void FileChoiceSuite::typedPathIsChosen()
{
    QFETCH(const QString, kind);
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("Größe 1.wav")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(WavBytes::file(WavBytes::fmt())) > 0);
    file.close();
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    QVERIFY(withChooser(fixture, kind, [&](QFileDialog* chooser) {
        auto* const name = chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(file.fileName());
        QTest::keyClick(name, Qt::Key_Return);
    }));
    const QJsonValue sent = fixture.setField().value(QLatin1String("value"));
    QCOMPARE(kind == QLatin1String("playback") ? sent : sent.toArray().at(0), QJsonValue(file.fileName()));
}

void FileChoiceSuite::nothingChosenSendsNothing()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    QVERIFY(
        withChooser(fixture, kind, [](QFileDialog* chooser) { QTest::keyClick(chooser, Qt::Key_Escape); }));
    QCOMPARE(fixture.emitted(), 0);
    QVERIFY(!fixture.find<QAbstractButton>(loadButton(kind))->isChecked());
    QVERIFY(fixture.editor->findChildren<QFileDialog*>().isEmpty());
}

void FileChoiceSuite::streamingAppendsToTheListAsItIsThen()
{
    FormFixture fixture("streaming");
    fixture.apply(R"({"FileList":["/data/old.wav"]})");
    QVERIFY(fixture.show());
    QVERIFY(withChooser(fixture, QStringLiteral("streaming"), [&](QFileDialog* chooser) {
        fixture.apply(R"({"FileList":["/data/new.wav","/data/newer.wav"]})"); // a snapshot
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosenPath);
        static_cast<QDialog*>(chooser)->accept();
    }));
    QCOMPARE(fixture.setField(),
             json(R"({"key":"FileList","value":["/data/new.wav","/data/newer.wav","/etc/hostname"]})"));
}

void FileChoiceSuite::editorHiddenMeanwhile()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    QVERIFY(withChooser(fixture, kind, [&](QFileDialog* chooser) {
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosenPath);
        fixture.window.hide();
    }));
    QCOMPARE(fixture.emitted(), 0);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!fixture.find<QAbstractButton>(loadButton(kind))->isChecked());
}

void FileChoiceSuite::editorGoneMeanwhile()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    QVERIFY(withChooser(fixture, kind, [&](QFileDialog*) { delete fixture.editor.data(); }));
    QVERIFY(!fixture.editor);
    QCOMPARE(fixture.emitted(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void FileChoiceSuite::editorGoneWithTheEdit()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    connect(fixture.editor, &RemoteModEditor::actionEdited, this, [&] { delete fixture.editor.data(); });
    QVERIFY(withChooser(fixture, kind, [](QFileDialog* chooser) {
        chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosenPath);
        static_cast<QDialog*>(chooser)->accept();
    }));
    QVERIFY(!fixture.editor);
    QCOMPARE(fixture.actions->count(), 1);
}

std::unique_ptr<QObject> makeFileChoiceSuite()
{
    return std::make_unique<FileChoiceSuite>();
}

#include "FileChoiceSuite.moc"
