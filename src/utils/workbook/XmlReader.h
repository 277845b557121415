#pragma once

#include <QString>

#include <array>
#include <memory>

struct XML_ParserStruct;

namespace Workbook {

class ZipAccess;

// The attributes of one element, while it is being begun.
class XmlAttributes final
{
public:
    explicit XmlAttributes(const char** namesAndValues)
        : m_namesAndValues(namesAndValues)
    {}
    // The UTF-8 value of the attribute of this name, whatever its prefix; nullptr if there is none.
    [[nodiscard]] const char* value(const char* name) const;

private:
    const char** m_namesAndValues;
};

// One step down in a document: inside a place, an element of this name is that place. Places are numbers that
// the reader's author chooses; the document itself is 0.
struct XmlStep
{
    int inside;
    const char* name;
    int place;
};

// Reads one XML document that comes in pieces, and sees only the places in its table of steps: an element
// that no step leads to is passed over with all that is in it. Names are compared without their prefix. A
// document type declaration, and anything beyond the limits, is refused, so that time and memory stay bounded
// by the document's size.
class XmlReader
{
public:
    virtual ~XmlReader();
    Q_DISABLE_COPY(XmlReader)

    // False when the document is refused: more of it need not be fed.
    [[nodiscard]] bool feed(const char* bytes, int size);
    // To be called after the last piece. What is wrong with the document; empty if nothing is.
    [[nodiscard]] QString finish();

protected:
    // The table outlives the reader.
    template <int count>
    explicit XmlReader(const XmlStep (&steps)[count])
        : XmlReader(steps, steps + count)
    {}

    virtual void begin(int place, const XmlAttributes& attributes) = 0;
    // Text directly in the place, in UTF-8, in any number of pieces.
    virtual void text(int place, const char* bytes, int size) = 0;
    virtual void end(int place) = 0;

    // Ends the reading with this problem; the first one counts.
    void refuse(const QString& problem);

private:
    XmlReader(const XmlStep* begin, const XmlStep* end);
    void enter(const char* name, const char** attributes);
    void leave();
    [[nodiscard]] int placeOf(const char* name) const;

    static constexpr int nowhere = -1;

    struct Callbacks;
    struct Free
    {
        void operator()(XML_ParserStruct* parser) const;
    };
    std::unique_ptr<XML_ParserStruct, Free> m_parser;
    const XmlStep* m_stepsBegin;
    const XmlStep* m_stepsEnd;
    std::array<int, 33> m_places = {}; // from the document inwards
    int m_depth = 0;
    int m_elements = 0;
    int m_fed = 0; // bytes
    QString m_problem;
};

// Feeds one file of the archive to the reader. What is wrong with it, in words that follow the archive's
// name; empty if nothing is.
[[nodiscard]] QString readPart(const ZipAccess& archive, const QString& part, XmlReader& reader);

} // namespace Workbook
