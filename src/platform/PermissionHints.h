#pragma once

#include <QString>

namespace quorvin {

/// What the user of this system can do about a permission that is missing, a short sentence each;
/// empty where the system tells by itself.
struct PermissionHints {
    QString microphone;
    QString accessibility;
    QString automation;
};

} // namespace quorvin
