#include "services/signals/SoundService.h"

#include "platform/ApplicationBundle.h"
#include "services/signals/SoundSetting.h"

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

std::unique_ptr<SoundPlayer> makePlayer(SoundPlayers& players, const ApplicationBundle& bundle,
                                        const QString& name, const QString& extension,
                                        double volume, double rate) {
    const auto path = bundle.resource(name, extension);
    if (!path) {
        return nullptr;
    }
    auto player = players.make(*path);
    if (player) {
        player->setVolume(volume);
        player->setRate(rate);
    }
    return player;
}

} // namespace

SoundService::SoundService(SoundPlayers& players, const ApplicationBundle& bundle,
                           const UserDefaults& defaults)
    : isEnabled(storedSoundsEnabled(defaults))
    , uiSoundPlayer(makePlayer(players, bundle, u"ui-sound"_s, u"mp3"_s, 0.22, 1.5))
    , popPlayer(makePlayer(players, bundle, u"ui-pop"_s, u"mp3"_s, 0.18, 1.0))
    , vinylStopPlayer(makePlayer(players, bundle, u"vinyl-stop"_s, u"mp3"_s, 0.22, 1.6)) {
    s_shared = this;
}

SoundService::~SoundService() {
    if (s_shared == this) {
        s_shared = nullptr;
    }
}

SoundService& SoundService::shared() {
    Q_ASSERT(s_shared);
    return *s_shared;
}

void SoundService::play(SoundPlayer* player) const {
    if (isEnabled && player) {
        player->playFromStart();
    }
}

} // namespace quorvin
