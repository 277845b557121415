#include "modeditors/WaveformTable.h"

#include "controls/ListHint.h"
#include "controls/ThemedIcon.h"
#include "modeditors/CutCaptions.h"
#include "modeditors/WaveformDelegate.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

using Controls::ThemeManager;

namespace {

constexpr int fileRowHeight = 44; // pixels, as all of these
constexpr int headerHeight = 60;
constexpr int factsWidth = 250;
constexpr int nameWidth = 126; // takes the caption of its column
constexpr int iconSide = 20;
constexpr int textSize = 13;    // what the style sheet wants of the rows; Qt takes no font from there
constexpr int captionSize = 18; // likewise of the header, which shortens by its own font
constexpr int comfortableRows = 8;

constexpr int sliceTime = 5;  // ms
constexpr int sliceStep = 32; // rows between two looks at the clock

constexpr int loadedRole = Qt::UserRole + 1;

QTableWidgetItem* makeItem(const QString& text, Qt::Alignment alignment, int type)
{
    auto* const item = new QTableWidgetItem(text, type);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    item->setTextAlignment(int(alignment));
    return item;
}

QString shownFacts(const WaveformEntry& entry)
{
    return entry.facts.isEmpty() ? QStringLiteral("-") : entry.facts;
}

} // namespace

WaveformTable::WaveformTable(QWidget* parent)
    : QTableWidget(parent)
    , m_notice(this)
    , m_writing(this)
    , m_parentIcon(Controls::themedIcon(QStringLiteral(":/QuickWaveform/Image/back.svg")))
    , m_folderIcon(Controls::themedIcon(QStringLiteral(":/QuickWaveform/Image/folder.svg")))
    , m_fileIcon(Controls::themedIcon(QStringLiteral(":/QuickWaveform/Image/audio.svg")))
    , m_loadedIcon(
          Controls::themedIcon(QStringLiteral(":/QuickWaveform/Image/checked.svg"), ThemeManager::FocusRing))
{
    setColumnCount(Facts + 1);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setFocusPolicy(Qt::NoFocus);
    setAutoScroll(false); // a click or a change in the folder moves nothing
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIconSize({iconSide, iconSide});
    setItemDelegate(new WaveformDelegate(this));
    QFont rowFont = font();
    rowFont.setPixelSize(textSize);
    setFont(rowFont);
    QHeaderView* const header = horizontalHeader();
    header->setFixedHeight(headerHeight);
    QFont captionFont = header->font();
    captionFont.setPixelSize(captionSize);
    captionFont.setWeight(QFont::Medium);
    header->setFont(captionFont);
    header->setHighlightSections(false);
    header->setTextElideMode(Qt::ElideRight);
    header->setSectionResizeMode(Name, QHeaderView::Stretch);
    header->setSectionResizeMode(Facts, QHeaderView::Fixed);
    header->resizeSection(Facts, factsWidth);
    tellCutCaptions(this);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(fileRowHeight);
    verticalHeader()->setDefaultSectionSize(fileRowHeight);
    m_writing.setSingleShot(true);
    connect(&m_writing, &QTimer::timeout, this, &WaveformTable::writeSlice);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        writeRowsInView();
        emit viewMoved();
    });
    connect(this, &QTableWidget::clicked, this, [this](const QModelIndex& index) {
        const QString path = m_entries.at(index.row()).path;
        if (path == m_pressedPath) {
            emit entryClicked(path);
        }
    });
    connect(this, &QTableWidget::doubleClicked, this,
            [this](const QModelIndex& index) { emit entryDoubleClicked(m_entries.at(index.row()).path); });
}

WaveformTable::~WaveformTable() = default;

void WaveformTable::showFolder(QVector<WaveformEntry> entries)
{
    setRowCount(0);
    clearSelection();
    setEntries(std::move(entries));
    emit viewMoved();
}

void WaveformTable::updateFolder(QVector<WaveformEntry> entries)
{
    keepFacts(&entries);
    const QString selected = selectedPath();
    const int top = verticalScrollBar()->value();
    const int anchorRow = anchor();
    const QString anchorPath = anchorRow < 0 ? QString() : m_entries.at(anchorRow).path;
    setEntries(std::move(entries));

    const int selectedRow = m_rowOf.value(selected, -1);
    if (selectedRow < 0) {
        clearSelection();
        setCurrentItem(nullptr);
    } else if (selectedPath() != selected) {
        setCurrentCell(selectedRow, Name, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    const int newAnchorRow = m_rowOf.value(anchorPath, -1);
    if (newAnchorRow >= 0) {
        verticalScrollBar()->setValue(top + (newAnchorRow - anchorRow) * fileRowHeight);
    }
    emit viewMoved();
}

void WaveformTable::setHint(const QString& hint)
{
    if (hint != m_hint) {
        m_hint = hint;
        viewport()->update();
    }
}

void WaveformTable::setNotice(const QString& notice)
{
    if (notice != m_notice.text()) {
        m_notice.setText(notice);
        updateGeometries();
    }
}

void WaveformTable::showFacts(const QString& path, const QString& facts)
{
    const int row = m_rowOf.value(path, -1);
    if (row < 0) {
        return;
    }
    m_entries[row].facts = facts;
    writeFacts(row);
}

void WaveformTable::setLoadedFile(const QString& path)
{
    if (path == m_loadedFile) {
        return;
    }
    m_loadedFile = path;
    const int before = m_loadedRow;
    m_loadedRow = findLoaded();
    if (before != m_loadedRow) {
        writeMark(before);
        writeMark(m_loadedRow);
    }
}

QStringList WaveformTable::files() const
{
    QStringList known;
    QStringList paths;
    for (const WaveformEntry& entry : m_entries) {
        if (entry.kind == WaveformEntry::Kind::File) {
            (entry.facts.isEmpty() ? paths : known).append(entry.path);
        }
    }
    return paths + known;
}

QString WaveformTable::selectedPath() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : m_entries.at(rows.first().row()).path;
}

bool WaveformTable::isInView(int row) const
{
    return visualRect(model()->index(row, Name)).intersects(viewport()->rect());
}

void WaveformTable::showRow(int row)
{
    setCurrentCell(row, Name, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(model()->index(row, Name), PositionAtCenter);
    writeRowsInView();
}

QSize WaveformTable::sizeHint() const
{
    const int width = nameWidth + factsWidth + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    return {width, headerHeight + comfortableRows * fileRowHeight + 2 * frameWidth()};
}

QSize WaveformTable::minimumSizeHint() const
{
    return {sizeHint().width(), headerHeight + 2 * fileRowHeight};
}

void WaveformTable::mousePressEvent(QMouseEvent* event)
{
    m_pressedPath = event->button() == Qt::LeftButton ? pathAt(event->pos()) : QString();
    QTableWidget::mousePressEvent(event);
}

// What the first click has opened stands below the second one, which was not meant for it.
void WaveformTable::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && pathAt(event->pos()) == m_pressedPath) {
        QTableWidget::mouseDoubleClickEvent(event);
    } else {
        m_pressedPath.clear();
        event->accept();
    }
}

void WaveformTable::paintEvent(QPaintEvent* event)
{
    QTableWidget::paintEvent(event);
    Controls::paintListHint(*this, m_hint, verticalHeader()->length());
}

void WaveformTable::resizeEvent(QResizeEvent* event)
{
    QTableWidget::resizeEvent(event);
    writeRowsInView();
    emit viewMoved();
}

// What the notice covers of the last entries can be scrolled into view.
void WaveformTable::updateGeometries()
{
    const int top = verticalScrollBar()->value();
    QTableWidget::updateGeometries();
    const int covered = m_notice.place(viewport()->geometry());
    if (covered > 0) {
        const int rest = verticalHeader()->length() + covered - viewport()->height();
        verticalScrollBar()->setMaximum(std::max(0, rest));
        verticalScrollBar()->setValue(top);
    }
}

void WaveformTable::setEntries(QVector<WaveformEntry> entries)
{
    m_entries = std::move(entries);
    m_rowOf.clear();
    m_rowOf.reserve(m_entries.size());
    for (int row = 0; row < m_entries.size(); ++row) {
        m_rowOf.insert(m_entries.at(row).path, row);
    }
    m_loadedRow = findLoaded();
    setRowCount(m_entries.size());
    updateGeometries(); // the scroll bar's range follows at once
    m_nextRow = 0;
    writeRowsInView();
    writeSlice();
}

// The row that stays where it is seen while others come and go: the selected one if it is in view, else the
// topmost. None in a table that is not scrolled.
int WaveformTable::anchor() const
{
    const int topRow = verticalScrollBar()->value() / fileRowHeight;
    if (verticalScrollBar()->value() == 0 || topRow >= m_entries.size()) {
        return -1;
    }
    const QModelIndexList selected = selectionModel()->selectedRows();
    return !selected.isEmpty() && isInView(selected.first().row()) ? selected.first().row() : topRow;
}

void WaveformTable::keepFacts(QVector<WaveformEntry>* entries) const
{
    for (WaveformEntry& entry : *entries) {
        const int row = m_rowOf.value(entry.path, -1);
        if (row >= 0 && m_entries.at(row).kind == entry.kind) {
            entry.facts = m_entries.at(row).facts;
        }
    }
}

// The profile may spell the file in another way than the listing does.
int WaveformTable::findLoaded() const
{
    if (m_loadedFile.isEmpty()) {
        return -1;
    }
    const QString cleaned = QDir::cleanPath(QDir::fromNativeSeparators(m_loadedFile));
    const int exact = m_rowOf.value(cleaned, -1);
    if (exact >= 0) {
        return exact;
    }
    const int canonical = m_rowOf.value(QFileInfo(m_loadedFile).canonicalFilePath(), -1);
    if (canonical >= 0) {
        return canonical;
    }
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(), [&](const WaveformEntry& entry) {
        return entry.path.size() == cleaned.size() && entry.path.compare(cleaned, Qt::CaseInsensitive) == 0;
    });
    return found == m_entries.cend() ? -1 : int(found - m_entries.cbegin());
}

void WaveformTable::writeRowsInView()
{
    const int top = verticalScrollBar()->value();
    const int last = std::min((top + viewport()->height()) / fileRowHeight, m_entries.size() - 1);
    for (int row = top / fileRowHeight; row <= last; ++row) {
        writeRow(row);
    }
}

void WaveformTable::writeSlice()
{
    QElapsedTimer clock;
    clock.start();
    while (m_nextRow < m_entries.size()) {
        if (m_nextRow % sliceStep == 0 && clock.hasExpired(sliceTime)) {
            m_writing.start(0);
            return;
        }
        writeRow(m_nextRow++);
    }
}

// Touches nothing that is as it should be.
void WaveformTable::writeRow(int row)
{
    const WaveformEntry& entry = m_entries.at(row);
    const int type = QTableWidgetItem::UserType + int(entry.kind);
    const QTableWidgetItem* const shown = item(row, Name);
    if (shown && shown->type() == type && shown->data(Qt::UserRole).toString() == entry.path) {
        writeMark(row);
        writeFacts(row);
        return;
    }
    auto* const name = makeItem(entry.name, Qt::AlignLeft | Qt::AlignVCenter, type);
    name->setData(Qt::UserRole, entry.path);
    name->setData(loadedRole, row == m_loadedRow);
    name->setIcon(iconOf(row));
    setItem(row, Name, name);
    setItem(row, Facts, makeItem(shownFacts(entry), Qt::AlignRight | Qt::AlignVCenter, type));
}

void WaveformTable::writeMark(int row)
{
    QTableWidgetItem* const shown = row < 0 ? nullptr : item(row, Name);
    const bool loaded = row == m_loadedRow;
    if (shown && shown->data(loadedRole).toBool() != loaded) {
        shown->setData(loadedRole, loaded);
        shown->setIcon(iconOf(row));
    }
}

void WaveformTable::writeFacts(int row)
{
    QTableWidgetItem* const shown = item(row, Facts);
    const QString facts = shownFacts(m_entries.at(row));
    if (shown && shown->text() != facts) {
        shown->setText(facts);
        update(model()->index(row, Name)); // a name takes the room that the facts leave
    }
}

QIcon WaveformTable::iconOf(int row) const
{
    switch (m_entries.at(row).kind) {
    case WaveformEntry::Kind::Parent:
        return m_parentIcon;
    case WaveformEntry::Kind::Folder:
        return m_folderIcon;
    case WaveformEntry::Kind::File:
        break;
    }
    return row == m_loadedRow ? m_loadedIcon : m_fileIcon;
}

QString WaveformTable::pathAt(const QPoint& position) const
{
    const int row = rowAt(position.y());
    return row < 0 ? QString() : m_entries.at(row).path;
}
