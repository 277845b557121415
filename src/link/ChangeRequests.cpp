#include "link/ChangeRequests.h"

#include "link/Keys.h"

namespace MinibarHelperProtocol {

QJsonObject SweepChangeRequest::toJson() const
{
    QJsonObject object = writeSweepSettings(settings);
    object.insert(Keys::expectedRevision, expectedRevision);
    return object;
}

QJsonObject ModChangeRequest::toJson() const
{
    QJsonObject object;
    object.insert(Keys::businessId, businessId);
    if (hasEnabled)
        object.insert(Keys::enabled, enabled);
    if (expectedRevision > 0)
        object.insert(Keys::expectedRevision, expectedRevision);
    if (!action.isEmpty()) {
        object.insert(Keys::action, action);
        object.insert(Keys::args, arguments);
    }
    if (hasProfile)
        object.insert(Keys::profile, profile);
    return object;
}

void registerChangeRequests()
{
    qRegisterMetaType<SweepChangeRequest>();
    qRegisterMetaType<ModChangeRequest>();
}

} // namespace MinibarHelperProtocol
