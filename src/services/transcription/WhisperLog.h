#pragma once

#include <QLoggingCategory>

namespace quorvin {

Q_DECLARE_LOGGING_CATEGORY(whisperLog)

} // namespace quorvin
