#pragma once

#include "utils/workbook/XmlReader.h"

#include <QByteArray>

#include <vector>

namespace Workbook {

// The table of texts that the cells of a workbook refer to by number. Read as the XML that it is; what tells
// how a word is pronounced is passed over.
class SharedStrings final : public XmlReader
{
public:
    SharedStrings();

    [[nodiscard]] int count() const { return static_cast<int>(m_ends.size()); }
    // UTF-8, escapes not yet undone; valid as long as the table. `index` is from 0 to count() - 1.
    [[nodiscard]] QByteArray at(int index) const;

private:
    void begin(int place, const XmlAttributes& attributes) override;
    void text(int place, const char* bytes, int size) override;
    void end(int place) override;
    [[nodiscard]] int lastEnd() const { return m_ends.empty() ? 0 : m_ends.back(); }

    QByteArray m_texts; // one behind the other
    std::vector<int> m_ends;
};

} // namespace Workbook
