#include "link/ModSnapshot.h"

#include "link/Keys.h"

#include <QJsonArray>

bool operator==(const ModBusinessEntry& left, const ModBusinessEntry& right)
{
    return left.id == right.id && left.name == right.name && left.text == right.text &&
           left.revision == right.revision && left.editorKind == right.editorKind &&
           left.profile == right.profile && left.editorState == right.editorState;
}

namespace MinibarHelperProtocol {

ModSnapshot parseModSnapshot(const QJsonObject& object)
{
    ModSnapshot mod;
    mod.enabled = object.value(Keys::enabled).toBool();
    mod.enabledBusinessId = object.value(Keys::enabledBusinessId).toString();
    const QJsonArray businesses = object.value(Keys::businesses).toArray();
    for (const QJsonValue element : businesses) {
        const QJsonObject business = element.toObject();
        ModBusinessEntry entry;
        entry.id = business.value(Keys::id).toString();
        entry.name = business.value(Keys::name).toString();
        entry.text = business.value(Keys::text).toString();
        if (entry.id.isEmpty() || entry.text.isEmpty())
            continue;
        entry.profile = business.value(Keys::profile).toObject();
        entry.editorKind = business.value(Keys::editorKind).toString();
        entry.editorState = business.value(Keys::editorState).toObject();
        entry.revision = business.value(Keys::revision).toInt();
        mod.businesses.append(entry);
    }
    return mod;
}

} // namespace MinibarHelperProtocol
