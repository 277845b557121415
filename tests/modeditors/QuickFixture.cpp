#include "modeditors/QuickFixture.h"

#include "utils/WavBytes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QJsonObject>
#include <QTest>

QuickFixture::QuickFixture()
    : m_table(editor.find<QTableWidget>(QStringLiteral("tableWidget")))
{
    if (!m_table || !m_folder.isValid()) {
        qFatal("no table or no folder");
    }
}

QString QuickFixture::path(const QString& name) const
{
    return QDir::cleanPath(QFileInfo(m_folder.path()).canonicalFilePath() + QLatin1Char('/') + name);
}

void QuickFixture::addWaveform(const QString& name, int samples, quint32 rate) const
{
    constexpr int bytesOfSample = 4;
    addFile(name, WavBytes::file(WavBytes::fmt(1, 2, rate) +
                                 WavBytes::chunk("data", WavBytes::samples(samples * bytesOfSample))));
}

void QuickFixture::addFile(const QString& name, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("no file to write");
    }
}

void QuickFixture::addFolder(const QString& name) const
{
    if (!QDir().mkpath(path(name))) {
        qFatal("no folder to make");
    }
}

void QuickFixture::apply(QJsonObject profile, const QJsonObject& state, bool enabled)
{
    if (!profile.contains(QStringLiteral("rootPath"))) {
        profile.insert(QStringLiteral("rootPath"), path());
    }
    editor.apply(state, profile, enabled);
}

void QuickFixture::applyLoaded(const QString& name, const QJsonObject& state, QJsonObject profile)
{
    profile.insert(QStringLiteral("loadedFilePath"), path(name));
    apply(profile, state);
}

QString QuickFixture::names() const
{
    QStringList names;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        names.append(m_table->item(row, 0)->text());
    }
    return names.join(QLatin1Char('|'));
}

QString QuickFixture::facts(const QString& name) const
{
    return m_table->item(rowOf(name), 1)->text();
}

QString QuickFixture::icon(int row) const
{
    return m_table->item(row, 0)->icon().name();
}

int QuickFixture::rowOf(const QString& name) const
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QTableWidgetItem* const item = m_table->item(row, 0);
        if (item && item->text() == name) {
            return row;
        }
    }
    qFatal("no row '%s'", qPrintable(name));
}

QString QuickFixture::selected() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.first().data().toString() : QString();
}

void QuickFixture::click(const QString& name) const
{
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, middleOf(name));
}

// As a mouse sends it: two presses at one place, whatever stands there at the second.
void QuickFixture::doubleClick(const QString& name) const
{
    const QPoint place = middleOf(name);
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(m_table->viewport(), Qt::LeftButton, {}, place);
}

void QuickFixture::clickSection(int section, bool twice) const
{
    QHeaderView* const header = m_table->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                       header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    if (twice) {
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, place);
    }
}

int QuickFixture::markedSection() const
{
    int marked = -1;
    for (int section = 0; section < m_table->columnCount(); ++section) {
        const QIcon icon = m_table->horizontalHeaderItem(section)->icon();
        if (!icon.isNull()) {
            if (marked >= 0 || icon.name() != QLatin1String(":/QuickWaveform/Image/position.svg")) {
                qFatal("one section carries the mark");
            }
            marked = section;
        }
    }
    return marked;
}

QPoint QuickFixture::middleOf(const QString& name) const
{
    return m_table->visualItemRect(m_table->item(rowOf(name), 0)).center();
}
