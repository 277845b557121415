#pragma once

#include "modeditors/LocateMarker.h"
#include "modeditors/WaveformProbe.h"
#include "modeditors/WaveformRoot.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

class WaveformTable;

// Walks the folders below a root in a table, marks the loaded file, and follows what happens in the folder
// that is shown.
class WaveformBrowser final : public QObject
{
    Q_OBJECT

public:
    // The table must outlive it.
    explicit WaveformBrowser(WaveformTable* table, QObject* parent = nullptr);
    ~WaveformBrowser() override;

    // As the profile spells them. A root that is not the one before is opened at `firstFolder`, if that is
    // one inside it; otherwise the folder stays.
    void show(const QString& root, const QString& firstFolder, const QString& loadedFile);
    // While paused it neither reads files nor follows changes; afterwards it catches up.
    void setPaused(bool paused);

    // The selected WAV file; empty while there is none, or none inside the root.
    [[nodiscard]] QString selectedFile() const;

signals:
    // A single click on any row, once its folder is open.
    void clicked();
    // A double click on a file inside the root.
    void fileChosen(const QString& path);

private:
    bool open(const QString& folder);
    void openNearest();
    void close();
    void list(bool again);
    void watch();
    void follow();
    void onClicked(const QString& path);
    void onDoubleClicked(const QString& path);
    [[nodiscard]] bool needsLocating() const;
    void locate();
    void showMarker();
    [[nodiscard]] bool isFileInside(const QString& path) const;

    WaveformTable* m_table;
    QFileSystemWatcher m_watcher;
    QTimer m_following;
    WaveformProbe m_probe;
    LocateMarker m_marker;
    WaveformRoot m_root;
    QString m_folder; // canonical; empty while none is open
    QString m_loadedFile;
    bool m_paused = false;
};
