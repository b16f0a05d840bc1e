#include "services/transcription/WhisperCommand.h"

#include "services/transcription/WhisperConstants.h"

#include <algorithm>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

int threadCount(int processorCount) {
    return processorCount > 9 ? std::min(processorCount / 2, 8) : 4;
}

QStringList commandLineArguments(const WhisperCommand& command) {
    const bool isSupported = WhisperConstants::supportedLanguages().contains(command.language);
    QStringList arguments = {u"-m"_s,  command.modelPath,
                             u"-f"_s,  command.wavPath,
                             u"-nt"_s, // no time stamps
                             u"-np"_s, // nothing but the text
                             u"-l"_s,  isSupported ? command.language : u"auto"_s};
    if (command.translateToEnglish) {
        arguments.append(u"--translate"_s);
    }
    arguments.append({u"-t"_s, QString::number(threadCount(command.processorCount))});
    return arguments;
}

} // namespace quorvin
