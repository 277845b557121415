#include "modeditors/WaveformRoot.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Empty for what does not exist.
QString canonical(const QString& path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).canonicalFilePath());
}

// The main process may run where "\" separates.
QString cleaned(QString spelling)
{
    return QDir::cleanPath(spelling.replace(QLatin1Char('\\'), QLatin1Char('/')));
}

bool isSame(const QString& left, const QString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

} // namespace

bool WaveformRoot::change(const QString& spelling)
{
    const QString path = canonical(spelling);
    const QString spelled = cleaned(spelling);
    const bool known =
        path.isEmpty() ? isSame(spelled, m_path) || isSame(spelled, m_spelling) : isSame(path, m_path);
    if (known) {
        return false;
    }
    m_path = path;
    m_spelling = spelled;
    return true;
}

bool WaveformRoot::is(const QString& folder) const
{
    return isSame(QDir::cleanPath(folder), m_path);
}

bool WaveformRoot::contains(const QString& path) const
{
    const QString inner = canonical(path);
    const QString outer = canonical(m_path);
    if (inner.isEmpty() || outer.isEmpty()) {
        return false;
    }
    const QLatin1Char separator('/');
    return isSame(inner, outer) ||
           inner.startsWith(outer.endsWith(separator) ? outer : outer + separator, Qt::CaseInsensitive);
}
