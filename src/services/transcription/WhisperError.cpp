#include "services/transcription/WhisperError.h"

#include "services/transcription/WhisperConstants.h"

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString message(WhisperError::Case errorCase, const QString& detail) {
    switch (errorCase) {
    case WhisperError::Case::processFailure:
        return u"Whisper process failed: "_s + detail;
    case WhisperError::Case::modelNotFound:
        return u"No whisper model file found. Please download a GGML model."_s;
    case WhisperError::Case::binaryNotFound:
        return u"whisper-cpp binary not found. Install via: "_s +
               WhisperConstants::installCommand();
    }
    return detail;
}

} // namespace

WhisperError::WhisperError(Case errorCase, const QString& detail)
    : m_case(errorCase), m_message(message(errorCase, detail).toStdString()) {}

} // namespace quorvin
