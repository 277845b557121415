#pragma once

#include <QString>

// The folder that the browser of waveforms cannot leave. Paths are compared in canonical form, without regard
// to case.
class WaveformRoot final
{
public:
    // Takes a folder as the profile spells it; empty for none. False when it is the one that is known
    // already, be it spelled in other letter case, with other separators or through a symbolic link. A known
    // folder that has disappeared stays the root.
    [[nodiscard]] bool change(const QString& spelling);

    // Canonical; empty while there is no such folder.
    [[nodiscard]] const QString& path() const { return m_path; }

    [[nodiscard]] bool is(const QString& folder) const;
    // The root itself, or something that exists below it wherever symbolic links lead.
    [[nodiscard]] bool contains(const QString& path) const;

private:
    QString m_path;
    QString m_spelling; // cleaned
};
