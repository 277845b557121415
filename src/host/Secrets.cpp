#include "host/Secrets.h"

#include <QByteArray>
#include <QRandomGenerator>

#include <array>

namespace Host {

QString randomHex128()
{
    std::array<quint32, 4> words{};
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    const QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof(words));
    return QString::fromLatin1(bytes.toHex());
}

bool equalInConstantTime(const QString& left, const QString& right)
{
    if (left.size() != right.size())
        return false;
    // volatile keeps the compiler from leaving the loop at the first difference.
    volatile ushort difference = 0;
    for (int i = 0; i < left.size(); ++i)
        difference = static_cast<ushort>(difference | (left.at(i).unicode() ^ right.at(i).unicode()));
    return difference == 0;
}

} // namespace Host
