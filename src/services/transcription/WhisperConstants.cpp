#include "services/transcription/WhisperConstants.h"

#include "platform/ApplicationBundle.h"

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace WhisperConstants {

QString installCommand() {
    return u"brew install whisper-cpp"_s;
}

QStringList binarySearchPaths(const QString& homeDirectory) {
    return {
        // macOS
        u"/opt/homebrew/bin/whisper-cli"_s,
        u"/opt/homebrew/bin/whisper-cpp"_s,
        u"/usr/local/bin/whisper-cli"_s,
        u"/usr/local/bin/whisper-cpp"_s,
        // Linux
        u"/usr/bin/whisper-cli"_s,
        u"/usr/bin/whisper-cpp"_s,
        homeDirectory + u"/.local/bin/whisper-cli"_s,
        homeDirectory + u"/.local/bin/whisper-cpp"_s,
        u"/home/linuxbrew/.linuxbrew/bin/whisper-cli"_s,
        u"/home/linuxbrew/.linuxbrew/bin/whisper-cpp"_s,
    };
}

QStringList modelFilenames() {
    return {
        u"ggml-large-v3.bin"_s, u"ggml-large-v3-turbo.bin"_s, u"ggml-large-v2.bin"_s,
        u"ggml-medium.bin"_s,   u"ggml-small.bin"_s,          u"ggml-base.bin"_s,
        u"ggml-base.en.bin"_s,  u"ggml-small.en.bin"_s,
    };
}

QStringList modelSearchPaths(const QString& homeDirectory,
                             const std::optional<QString>& applicationSupport) {
    QStringList paths = {
        // macOS
        homeDirectory + u"/models"_s,
        homeDirectory + u"/.local/share/whisper"_s,
        homeDirectory + u"/Library/Application Support/quorvin/models"_s,
        u"/opt/homebrew/share/whisper-cpp/models"_s,
        homeDirectory + u"/.local/share/quorvin/models"_s,
        // Linux
        u"/usr/share/whisper-cpp/models"_s,
        u"/usr/local/share/whisper-cpp/models"_s,
        u"/home/linuxbrew/.linuxbrew/share/whisper-cpp/models"_s,
    };
    if (applicationSupport) {
        paths.append(*applicationSupport + u"/whisper-cpp/models"_s);
    }
    paths.removeDuplicates();
    return paths;
}

QStringList supportedLanguages() {
    return {u"auto"_s, u"en"_s, u"ru"_s, u"es"_s, u"fr"_s, u"de"_s, u"zh"_s, u"ja"_s};
}

} // namespace WhisperConstants

EngineLocations EngineLocations::standard(const ApplicationBundle& bundle) {
    return {WhisperConstants::binarySearchPaths(bundle.homeDirectory()),
            WhisperConstants::modelSearchPaths(bundle.homeDirectory(),
                                               bundle.applicationSupportDirectory())};
}

} // namespace quorvin
