#pragma once

#include "modeditors/EditorFixture.h"

#include <QDir>
#include <QTableWidget>
#include <QTemporaryDir>

// A shown quick waveform editor and a folder of its own to browse.
class QuickFixture final
{
public:
    QuickFixture();

    // Paths in the folder; the empty name is the folder itself.
    [[nodiscard]] QString path(const QString& name = {}) const;
    // A WAV file of two channels with 16 bits; folders on the way are made.
    void addWaveform(const QString& name, int samples = 48000, quint32 rate = 48000) const;
    void addFile(const QString& name, const QByteArray& content) const;
    void addFolder(const QString& name) const;

    // The folder is the root, unless the profile says otherwise.
    void apply(QJsonObject profile = {}, const QJsonObject& state = {}, bool enabled = false);
    // With a file of the folder loaded.
    void applyLoaded(const QString& name, const QJsonObject& state = {}, QJsonObject profile = {});

    [[nodiscard]] QTableWidget& table() const { return *m_table; }
    // The names of all rows, "|" between them.
    [[nodiscard]] QString names() const;
    [[nodiscard]] QString facts(const QString& name) const;
    [[nodiscard]] QString icon(int row) const; // the file's name
    [[nodiscard]] int rowOf(const QString& name) const;
    [[nodiscard]] QString selected() const; // name
    void click(const QString& name) const;
    void doubleClick(const QString& name) const;
    // In the header.
    void clickSection(int section, bool twice = false) const;
    // The section that carries the mark; -1 for none.
    [[nodiscard]] int markedSection() const;

    EditorFixture editor{QStringLiteral("quick-waveform")};

private:
    [[nodiscard]] QPoint middleOf(const QString& name) const;

    QTemporaryDir m_folder;
    QTableWidget* m_table;
};
