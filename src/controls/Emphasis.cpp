#include "controls/Emphasis.h"

namespace Controls {
namespace {

QFont::Weight current = QFont::DemiBold;

} // namespace

QFont::Weight emphasis()
{
    return current;
}

void setEmphasis(QFont::Weight weight)
{
    current = weight;
}

} // namespace Controls
