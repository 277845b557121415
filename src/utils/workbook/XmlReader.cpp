#include "utils/workbook/XmlReader.h"

#include "utils/workbook/Limits.h"
#include "utils/workbook/ZipAccess.h"

#include <cstring>
#include <expat.h>

namespace Workbook {
namespace {

const char* withoutPrefix(const char* name)
{
    const char* const colon = std::strrchr(name, ':');
    return colon != nullptr ? colon + 1 : name;
}

} // namespace

const char* XmlAttributes::value(const char* name) const
{
    for (const char** pair = m_namesAndValues; *pair != nullptr; pair += 2)
        if (std::strcmp(withoutPrefix(pair[0]), name) == 0)
            return pair[1];
    return nullptr;
}

// What expat calls; `data` is the reader.
struct XmlReader::Callbacks
{
    static void start(void* data, const char* name, const char** attributes)
    {
        static_cast<XmlReader*>(data)->enter(name, attributes);
    }
    static void end(void* data, const char*) { static_cast<XmlReader*>(data)->leave(); }
    static void text(void* data, const char* bytes, int size)
    {
        auto* const reader = static_cast<XmlReader*>(data);
        const int place = reader->m_places[std::size_t(reader->m_depth)];
        if (place != nowhere && reader->m_problem.isEmpty())
            reader->text(place, bytes, size);
    }
    static void documentType(void* data, const char*, const char*, const char*, int)
    {
        static_cast<XmlReader*>(data)->refuse(QStringLiteral("it has a document type declaration"));
    }
};

void XmlReader::Free::operator()(XML_ParserStruct* parser) const
{
    XML_ParserFree(parser);
}

XmlReader::XmlReader(const XmlStep* begin, const XmlStep* end)
    : m_parser(XML_ParserCreate(nullptr))
    , m_stepsBegin(begin)
    , m_stepsEnd(end)
{
    static_assert(std::tuple_size_v<decltype(m_places)> == Limits::depth + 1);
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), Callbacks::start, Callbacks::end);
    XML_SetCharacterDataHandler(m_parser.get(), Callbacks::text);
    XML_SetStartDoctypeDeclHandler(m_parser.get(), Callbacks::documentType);
}

XmlReader::~XmlReader() = default;

bool XmlReader::feed(const char* bytes, int size)
{
    if (m_problem.isEmpty() && XML_Parse(m_parser.get(), bytes, size, XML_FALSE) != XML_STATUS_OK)
        refuse(QString::fromLatin1(XML_ErrorString(XML_GetErrorCode(m_parser.get()))));
    m_fed += size;
    if (m_fed - XML_GetCurrentByteIndex(m_parser.get()) > Limits::tagSize)
        refuse(QStringLiteral("it has a tag of more than 64 KiB"));
    return m_problem.isEmpty();
}

QString XmlReader::finish()
{
    if (m_problem.isEmpty() && XML_Parse(m_parser.get(), nullptr, 0, XML_TRUE) != XML_STATUS_OK)
        refuse(QString::fromLatin1(XML_ErrorString(XML_GetErrorCode(m_parser.get()))));
    return m_problem;
}

void XmlReader::refuse(const QString& problem)
{
    if (!m_problem.isEmpty())
        return;
    m_problem = problem;
    XML_StopParser(m_parser.get(), XML_FALSE);
}

void XmlReader::enter(const char* name, const char** attributes)
{
    if (!m_problem.isEmpty()) // expat tells the end of an empty element even when it has been stopped
        return;
    if (m_depth == Limits::depth)
        return refuse(QStringLiteral("its elements are more than %1 deep").arg(Limits::depth));
    if (++m_elements > Limits::elements)
        return refuse(QStringLiteral("it has more than %1 elements").arg(Limits::elements));
    const int place = placeOf(withoutPrefix(name));
    m_places[std::size_t(++m_depth)] = place;
    if (place != nowhere)
        begin(place, XmlAttributes(attributes));
}

void XmlReader::leave()
{
    if (!m_problem.isEmpty())
        return;
    const int place = m_places[std::size_t(m_depth--)];
    if (place != nowhere)
        end(place);
}

int XmlReader::placeOf(const char* name) const
{
    const int inside = m_places[std::size_t(m_depth)];
    for (const XmlStep* step = m_stepsBegin; step != m_stepsEnd; ++step)
        if (step->inside == inside && std::strcmp(step->name, name) == 0)
            return step->place;
    return nowhere;
}

QString readPart(const ZipAccess& archive, const QString& part, XmlReader& reader)
{
    const QString unpacking =
        archive.read(part, [&reader](const char* bytes, int size) { return reader.feed(bytes, size); });
    if (!unpacking.isEmpty())
        return unpacking;
    const QString reading = reader.finish();
    return reading.isEmpty() ? QString() : QStringLiteral("\"%1\" in it is refused: %2").arg(part, reading);
}

} // namespace Workbook
