#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "formeditors/PathList.h"
#include "formeditors/SampleCounts.h"
#include "formeditors/StreamedFiles.h"
#include "formeditors/WavFileChoice.h"
#include "ui_RemoteStreamingPanel.h"
#include "utils/NumberText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QPointer>

namespace {

constexpr char context[] = "RemoteStreamingPanel";

QString fileListKey()
{
    return QStringLiteral("FileList");
}

using Form = Ui::StreamingPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnSampleRate, {"SampleRate", QT_TRANSLATE_NOOP("RemoteStreamingPanel", "Sample Rate"), Quantity::Frequency, 1e6, 3, 1}},
    {&Form::btnIQScale, {"IQScale", QT_TRANSLATE_NOOP("RemoteStreamingPanel", "I/Q Scale(%)"), Quantity::Number, 1, 2, 0.01, 100}},
};
// clang-format on

// Plays a list of files one after another.
class RemoteStreamingPanel final : public FormPanel<Form>
{
    Q_DECLARE_TR_FUNCTIONS(RemoteStreamingPanel)

public:
    explicit RemoteStreamingPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        connect(form().Load, &QPushButton::clicked, this, &RemoteStreamingPanel::load);
        connect(form().Remove, &QPushButton::clicked, this, &RemoteStreamingPanel::remove);
        connect(form().Unload, &QPushButton::clicked, this, [this] { editFiles({}); });
        connect(form().FileList, &PathList::orderEdited, this, &RemoteStreamingPanel::reorder);
    }

protected:
    void applyPanelState() override
    {
        if (m_files.update(listedFiles()))
            fillList();
        PathList* const list = form().FileList;
        if (list->currentRow() < 0 && list->count() > 0)
            list->setCurrentRow(list->count() - 1);

        const quint64 samples = m_files.totalSamples();
        form().btnTotalFiles->setLabelText(QString::number(m_files.files().size()));
        form().btnTotalSamples->setLabelText(QString::number(samples));
        form().btnTotalDuration->setLabelText(durationText(samples, number(QStringLiteral("SampleRate"))));
        form().btnPlaybackPos->setLabelText(QStringLiteral("0%"));
        const bool hasFiles = !m_files.files().isEmpty();
        form().Remove->setEnabled(hasFiles);
        form().Unload->setEnabled(hasFiles);
        form().enabled->setEnabled(hasFiles);
    }

private:
    [[nodiscard]] QStringList listedFiles() const
    {
        QStringList files;
        const QJsonArray listed = editorState().value(fileListKey()).toArray();
        for (const QJsonValue file : listed) {
            if (!file.toString().isEmpty())
                files.append(file.toString());
        }
        return files;
    }

    // The row of the current file stays current.
    void fillList()
    {
        PathList* const list = form().FileList;
        const QString current = list->currentPath();
        const int currentRow = list->currentRow();
        list->clear();
        for (const StreamedFiles::File& file : m_files.files()) {
            auto* const row = new QListWidgetItem(rowText(file), list);
            row->setData(Qt::UserRole, file.path);
            row->setToolTip(file.facts ? row->text() + QLatin1Char('\n') + file.path : file.path);
        }
        const QStringList paths = m_files.paths(); // one may be listed twice
        list->setCurrentRow(paths.value(currentRow) == current ? currentRow : paths.indexOf(current));
    }

    [[nodiscard]] QString rowText(const StreamedFiles::File& file) const
    {
        const QString name = QFileInfo(file.path).fileName();
        if (!file.facts)
            return name;
        const QString rate =
            file.facts->rate > 0 ? Utils::normalizeFrequency(file.facts->rate, true, false) : tr("<unknown>");
        const QString samples = Utils::normalize1K(static_cast<double>(file.facts->samples), 2);
        return tr("%1 -- %2 Samples -- Sample Rate: %3").arg(name, samples, rate);
    }

    void editFiles(const QStringList& files)
    {
        if (!isApplying())
            setField(fileListKey(), QJsonArray::fromStringList(files));
    }

    void load()
    {
        const QPointer<RemoteStreamingPanel> self(this);
        const QString file =
            chooseWavFile(tr("Select %1 file").arg(QLatin1String("WAV")), tr("WAV Files (*.wav)"), this);
        if (self && !file.isEmpty())
            editFiles(listedFiles() << file); // as the list is now
        if (self)
            form().Load->setChecked(false);
    }

    void remove()
    {
        QStringList files = listedFiles();
        const int row = qMax(form().FileList->currentRow(), 0);
        if (row >= files.size())
            return;
        files.removeAt(row);
        editFiles(files);
    }

    void reorder(const QStringList& files)
    {
        const QPointer<RemoteStreamingPanel> self(this);
        if (files != listedFiles())
            editFiles(files);
        if (self && form().FileList->paths() != m_files.paths())
            fillList(); // until it is confirmed
    }

    StreamedFiles m_files;
};

} // namespace

RemoteModEditor* createStreamingPanel(QWidget* parent)
{
    return new RemoteStreamingPanel(parent);
}
