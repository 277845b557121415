#include "utils/workbook/SharedStrings.h"

#include "utils/workbook/Limits.h"

namespace Workbook {
namespace {

enum Place { Document, Table, Item, Text, Run, RunText };

const XmlStep steps[] = {
    {Document, "sst", Table}, {Table, "si", Item}, {Item, "t", Text}, {Item, "r", Run}, {Run, "t", RunText},
};

} // namespace

SharedStrings::SharedStrings()
    : XmlReader(steps)
{}

QByteArray SharedStrings::at(int index) const
{
    const int begin = index == 0 ? 0 : m_ends[std::size_t(index) - 1];
    return QByteArray::fromRawData(m_texts.constData() + begin, m_ends[std::size_t(index)] - begin);
}

void SharedStrings::begin(int, const XmlAttributes&) {}

void SharedStrings::text(int place, const char* bytes, int size)
{
    if (place != Text && place != RunText)
        return;
    if (m_texts.size() - lastEnd() + size > Limits::textSize)
        return refuse(QStringLiteral("one of its texts is too long"));
    m_texts.append(bytes, size);
}

void SharedStrings::end(int place)
{
    if (place == Item)
        m_ends.push_back(m_texts.size());
}

} // namespace Workbook
