#include "modeditors/WaveformBrowser.h"

#include "modeditors/WaveformTable.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>

namespace {

// Many files that come one by one are listed together.
constexpr int followDelay = 100; // ms

} // namespace

WaveformBrowser::WaveformBrowser(WaveformTable* table, QObject* parent)
    : QObject(parent)
    , m_table(table)
    , m_watcher(this)
    , m_following(this)
    , m_probe(this)
    , m_marker(table)
{
    m_following.setSingleShot(true);
    connect(&m_following, &QTimer::timeout, this, &WaveformBrowser::follow);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_paused && !m_following.isActive()) {
            m_following.start(followDelay);
        }
    });
    connect(&m_probe, &WaveformProbe::probed, table, &WaveformTable::showFacts);
    connect(table, &WaveformTable::entryClicked, this, &WaveformBrowser::onClicked);
    connect(table, &WaveformTable::entryDoubleClicked, this, &WaveformBrowser::onDoubleClicked);
    connect(table, &WaveformTable::viewMoved, this, &WaveformBrowser::showMarker);
    connect(table->horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, &WaveformBrowser::locate);
    connect(table->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        if (m_marker.isOn(section) && needsLocating()) {
            locate();
        }
    });
}

WaveformBrowser::~WaveformBrowser() = default;

void WaveformBrowser::show(const QString& root, const QString& firstFolder, const QString& loadedFile)
{
    m_loadedFile = loadedFile;
    m_table->setLoadedFile(loadedFile);
    if (m_root.change(root)) {
        m_folder.clear();
    }
    if (m_folder.isEmpty() && !open(firstFolder) && !open(m_root.path())) {
        close();
    }
    showMarker();
}

void WaveformBrowser::setPaused(bool paused)
{
    if (paused == m_paused) {
        return;
    }
    m_paused = paused;
    m_probe.setPaused(paused);
    if (!paused) {
        follow();
    }
}

QString WaveformBrowser::selectedFile() const
{
    const QString path = m_table->selectedPath();
    return isNamedAsWaveform(path) && isFileInside(path) ? path : QString();
}

// False, with nothing changed, for what is no folder inside the root.
bool WaveformBrowser::open(const QString& folder)
{
    const QFileInfo canonical(folder.isEmpty() ? QString() : QFileInfo(folder).canonicalFilePath());
    if (!canonical.isDir() || !m_root.contains(canonical.filePath())) {
        return false;
    }
    m_folder = canonical.filePath();
    list(false);
    return true;
}

// The folder has gone: what is left above it, up to the root.
void WaveformBrowser::openNearest()
{
    QString folder = m_folder;
    while (!open(folder)) {
        const QString above = QFileInfo(folder).path();
        if (m_root.is(folder) || above == folder) {
            close();
            return;
        }
        folder = above;
    }
}

void WaveformBrowser::close()
{
    m_folder.clear();
    m_probe.stop();
    m_table->showFolder({});
    m_table->setHint(tr("The folder of the waveforms is not available."));
    watch();
}

void WaveformBrowser::list(bool again)
{
    m_probe.stop();
    QVector<WaveformEntry> entries = listWaveforms(m_folder);
    m_table->setHint(entries.isEmpty() ? tr("No WAV files in this folder.") : QString());
    if (!m_root.is(m_folder)) {
        entries.prepend(parentOf(m_folder));
    }
    if (again) {
        m_table->updateFolder(std::move(entries));
    } else {
        m_table->showFolder(std::move(entries));
    }
    watch();
    m_probe.start(m_table->files());
}

// The folder that is shown and no other.
void WaveformBrowser::watch()
{
    const QStringList watched = m_watcher.directories();
    if (watched == QStringList(m_folder)) {
        return;
    }
    if (!watched.isEmpty()) {
        m_watcher.removePaths(watched);
    }
    if (!m_folder.isEmpty() && QFileInfo(m_folder).isReadable()) {
        m_watcher.addPath(m_folder);
    }
}

void WaveformBrowser::follow()
{
    if (m_paused) {
        return;
    }
    if (m_folder.isEmpty()) {
        open(m_root.path()); // it may have come back
    } else if (QFileInfo(m_folder).isDir() && m_root.contains(m_folder)) {
        list(true);
    } else {
        openNearest();
    }
}

void WaveformBrowser::onClicked(const QString& path)
{
    if (QFileInfo(path).isDir()) {
        open(path);
    }
    emit clicked();
}

void WaveformBrowser::onDoubleClicked(const QString& path)
{
    if (isFileInside(path)) {
        emit fileChosen(path);
    }
}

bool WaveformBrowser::needsLocating() const
{
    if (m_loadedFile.isEmpty() || !m_root.contains(m_loadedFile)) {
        return false;
    }
    const int row = m_table->loadedRow();
    return row < 0 || !m_table->isInView(row);
}

void WaveformBrowser::locate()
{
    if (m_loadedFile.isEmpty()) {
        return;
    }
    const QString folder = QFileInfo(QFileInfo(m_loadedFile).path()).canonicalFilePath();
    if (m_table->loadedRow() < 0 && folder != m_folder) {
        open(folder);
    }
    if (m_table->loadedRow() >= 0) {
        m_table->showRow(m_table->loadedRow());
    }
    showMarker();
}

void WaveformBrowser::showMarker()
{
    m_marker.show(needsLocating());
}

bool WaveformBrowser::isFileInside(const QString& path) const
{
    return QFileInfo(path).isFile() && m_root.contains(path);
}
