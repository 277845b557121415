#include "utils/workbook/Parts.h"

#include "utils/workbook/Limits.h"
#include "utils/workbook/XmlReader.h"
#include "utils/workbook/ZipAccess.h"

#include <QDir>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <cstring>

namespace Workbook {
namespace {

struct Relationship
{
    QString id;
    QString type; // an address; its last word tells what the target is
    QString target;

    [[nodiscard]] bool leadsTo(QLatin1String what) const { return type.endsWith(QLatin1Char('/') + what); }
};

const XmlStep relationshipSteps[] = {{0, "Relationships", 1}, {1, "Relationship", 2}};

class RelationshipsReader final : public XmlReader
{
public:
    // Relative targets count from the folder of the part whose relationships these are.
    explicit RelationshipsReader(const QString& folder)
        : XmlReader(relationshipSteps)
        , m_folder(folder)
    {}
    [[nodiscard]] const QVector<Relationship>& relationships() const { return m_relationships; }

private:
    void begin(int place, const XmlAttributes& attributes) override
    {
        if (place != 2)
            return;
        if (m_relationships.size() == Limits::relationships)
            return refuse(QStringLiteral("it has more than %1 relationships").arg(Limits::relationships));
        const char* const mode = attributes.value("TargetMode");
        if (mode != nullptr && std::strcmp(mode, "External") == 0)
            return;
        m_relationships.append({QString::fromUtf8(attributes.value("Id")),
                                QString::fromUtf8(attributes.value("Type")),
                                resolved(QString::fromUtf8(attributes.value("Target")))});
    }
    void text(int, const char*, int) override {}
    void end(int) override {}

    // As a file of the archive: without a slash at its beginning.
    [[nodiscard]] QString resolved(const QString& target) const
    {
        const QString whole = target.startsWith(QLatin1Char('/')) ? target : m_folder + target;
        return QDir::cleanPath(QLatin1Char('/') + whole).mid(1);
    }

    QString m_folder;
    QVector<Relationship> m_relationships;
};

const XmlStep workbookSteps[] = {{0, "workbook", 1}, {1, "sheets", 2}, {2, "sheet", 3}};

struct NamedSheet
{
    QString name;
    QString id; // of its relationship

    [[nodiscard]] bool isCalled(const QString& other) const
    {
        return name.trimmed().compare(other.trimmed(), Qt::CaseInsensitive) == 0;
    }
};

// The workbook's sheets in their order.
class SheetsReader final : public XmlReader
{
public:
    SheetsReader()
        : XmlReader(workbookSteps)
    {}
    [[nodiscard]] const QVector<NamedSheet>& sheets() const { return m_sheets; }

private:
    void begin(int place, const XmlAttributes& attributes) override
    {
        if (place != 3)
            return;
        if (m_sheets.size() == Limits::relationships)
            return refuse(QStringLiteral("it has more than %1 sheets").arg(Limits::relationships));
        m_sheets.append(
            {QString::fromUtf8(attributes.value("name")), QString::fromUtf8(attributes.value("id"))});
    }
    void text(int, const char*, int) override {}
    void end(int) override {}

    QVector<NamedSheet> m_sheets;
};

// The relationships of a part lie beside it in a folder of their own; those of the whole archive belong to
// the part without a name.
QString readRelationships(const ZipAccess& archive, const QString& part, QVector<Relationship>& relationships)
{
    const int nameBegin = part.lastIndexOf(QLatin1Char('/')) + 1;
    const QString folder = part.left(nameBegin);
    const QString relationshipsPart =
        folder + QLatin1String("_rels/") + part.mid(nameBegin) + QLatin1String(".rels");
    RelationshipsReader reader(folder);
    QString problem = readPart(archive, relationshipsPart, reader);
    relationships = reader.relationships();
    return problem;
}

// The target of the first relationship that leads to such a thing; empty if none does.
QString targetOf(const QVector<Relationship>& relationships, QLatin1String what)
{
    const auto found =
        std::find_if(relationships.begin(), relationships.end(),
                     [what](const Relationship& relationship) { return relationship.leadsTo(what); });
    return found != relationships.end() ? found->target : QString();
}

// The target of the sheet of this name, or else of the first; only those with cells count.
QString chosenSheet(const QVector<NamedSheet>& sheets, const QString& name,
                    const QVector<Relationship>& relationships)
{
    QString first;
    for (const NamedSheet& sheet : sheets) {
        for (const Relationship& relationship : relationships) {
            if (relationship.id != sheet.id || !relationship.leadsTo(QLatin1String("worksheet")))
                continue;
            if (sheet.isCalled(name))
                return relationship.target;
            if (first.isEmpty())
                first = relationship.target;
        }
    }
    return first;
}

} // namespace

QString findParts(const ZipAccess& archive, const QString& sheetName, Parts& parts)
{
    QVector<Relationship> relationships;
    QString problem = readRelationships(archive, QString(), relationships);
    if (!problem.isEmpty())
        return problem;
    const QString workbook = targetOf(relationships, QLatin1String("officeDocument"));
    if (workbook.isEmpty())
        return QStringLiteral("there is no document in it");
    SheetsReader reader;
    problem = readPart(archive, workbook, reader);
    if (problem.isEmpty())
        problem = readRelationships(archive, workbook, relationships);
    if (!problem.isEmpty())
        return problem;
    parts.sheet = chosenSheet(reader.sheets(), sheetName, relationships);
    parts.sharedStrings = targetOf(relationships, QLatin1String("sharedStrings"));
    return parts.sheet.isEmpty() ? QStringLiteral("there is no sheet in it") : QString();
}

} // namespace Workbook
