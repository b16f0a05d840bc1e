#include "views/settings/PermissionStatuses.h"

#include "theme/HexColor.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

PermissionStatuses::PermissionStatus PermissionStatuses::of(bool isAuthorized, bool isKnown) {
    if (isAuthorized) {
        return PermissionStatus::granted;
    }
    return isKnown ? PermissionStatus::denied : PermissionStatus::unknown;
}

QString PermissionStatuses::label(PermissionStatus status) {
    switch (status) {
    case PermissionStatus::granted:
        return u"Granted"_s;
    case PermissionStatus::denied:
        return u"Denied"_s;
    case PermissionStatus::unknown:
        break;
    }
    return u"Unknown"_s;
}

QColor PermissionStatuses::color(PermissionStatus status) {
    switch (status) {
    case PermissionStatus::granted:
        return hexColor(u"22c55e");
    case PermissionStatus::denied:
        return hexColor(u"ef4444");
    case PermissionStatus::unknown:
        break;
    }
    return hexColor(u"f59e0b");
}

} // namespace quorvin
