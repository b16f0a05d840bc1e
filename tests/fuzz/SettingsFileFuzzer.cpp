#include "fuzz/Fuzzing.h"
#include "fuzz/ScratchDirectory.h"
#include "models/AppSettings.h"
#include "platform/qt/JsonUserDefaults.h"

#include <cmath>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::bytes;
using quorvin::testing::require;
using quorvin::testing::ScratchDirectory;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the file is there");
    return file.readAll();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ScratchDirectory directory;
    const QString name = u"settings.json"_s;
    const QByteArray content = bytes(data, size);
    directory.write(name, content);

    AppSettings read;
    {
        JsonUserDefaults store(directory.path(name));
        read = AppSettings::read(store);
        require(read.silenceTimeout != 0 && read.windowOpacity != 0 && read.noiseGatePercent != 0,
                "a stored 0 is the default");
        require(std::isfinite(read.windowOpacity) && std::isfinite(read.inputGainDB) &&
                    std::isfinite(read.noiseGatePercent),
                "a number is finite");
        const QStringList damaged = QDir(directory.path(QString())).entryList({u"*.damaged-*"_s});
        require(contentOf(directory.path(damaged.isEmpty() ? name : damaged.first())) == content,
                "nothing that was recorded is lost");
        store.setString(SettingsKey::language, u"sv"_s);
    }
    const JsonUserDefaults store(directory.path(name));
    const AppSettings again = AppSettings::read(store);
    require(again.language == u"sv", "what is set is there at the next start");
    require(again.selectedDevice == read.selectedDevice &&
                again.silenceTimeout == read.silenceTimeout &&
                again.windowOpacity == read.windowOpacity &&
                again.inputGainDB == read.inputGainDB &&
                again.soundsEnabled == read.soundsEnabled &&
                again.onboardingComplete == read.onboardingComplete,
            "and so is the rest, as it was");
    return 0;
}
