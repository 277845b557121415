#pragma once

#include "modeditors/ListNotice.h"
#include "modeditors/WaveformListing.h"

#include <QHash>
#include <QIcon>
#include <QTableWidget>
#include <QTimer>

// The table of a folder's waveforms. Rows in view are written at once, the others in the following turns of
// the event loop. The item of the first column carries the entry's path (Qt::UserRole) and whether it is the
// loaded file (Qt::UserRole + 1).
class WaveformTable final : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { Name, Facts };

    explicit WaveformTable(QWidget* parent = nullptr);
    ~WaveformTable() override;

    // From the top, with nothing selected.
    void showFolder(QVector<WaveformEntry> entries);
    // The same folder again: selection and scroll position stay with their entries, as do the facts.
    void updateFolder(QVector<WaveformEntry> entries);
    // What is to be read where the table has no entry; empty for nothing.
    void setHint(const QString& hint);
    // What stands below the entries until it is taken back; empty for nothing.
    void setNotice(const QString& notice);

    // Of a file that is listed; others are ignored.
    void showFacts(const QString& path, const QString& facts);
    // As the profile spells it; empty for none.
    void setLoadedFile(const QString& path);

    // From top to bottom, those first whose facts have not been read yet.
    [[nodiscard]] QStringList files() const;
    // Empty when nothing is selected.
    [[nodiscard]] QString selectedPath() const;
    // -1 while the loaded file is not listed.
    [[nodiscard]] int loadedRow() const { return m_loadedRow; }
    [[nodiscard]] bool isInView(int row) const;
    // Selects the row and brings it to the middle.
    void showRow(int row);

    // A width at which names can be read.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    // By the left button. A second click that meets another entry than the first did does not count.
    void entryClicked(const QString& path);
    void entryDoubleClicked(const QString& path);
    // Other rows may be in view.
    void viewMoved();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;

private:
    void setEntries(QVector<WaveformEntry> entries);
    void keepFacts(QVector<WaveformEntry>* entries) const;
    [[nodiscard]] int anchor() const;
    [[nodiscard]] int findLoaded() const;
    void writeRowsInView();
    void writeSlice();
    void writeRow(int row);
    void writeMark(int row);
    void writeFacts(int row);
    [[nodiscard]] QIcon iconOf(int row) const;
    [[nodiscard]] QString pathAt(const QPoint& position) const;

    QVector<WaveformEntry> m_entries; // by row
    QHash<QString, int> m_rowOf;      // by path
    QString m_loadedFile;
    QString m_pressedPath;
    QString m_hint;
    ListNotice m_notice;
    QTimer m_writing;
    int m_nextRow = 0; // rows from here on may not be written yet
    int m_loadedRow = -1;
    const QIcon m_parentIcon;
    const QIcon m_folderIcon;
    const QIcon m_fileIcon;
    const QIcon m_loadedIcon;
};
