#include "services/transcription/WhisperLog.h"

namespace quorvin {

Q_LOGGING_CATEGORY(whisperLog, "com.quorvin.WhisperService", QtInfoMsg)

} // namespace quorvin
