#pragma once

#include <QString>

#include <memory>

namespace quorvin {

/// One short sound, loaded and ready. Main thread only.
class SoundPlayer {
public:
    SoundPlayer() = default;
    SoundPlayer(const SoundPlayer&) = delete;
    SoundPlayer& operator=(const SoundPlayer&) = delete;
    virtual ~SoundPlayer() = default;

    /// 0 is silent, 1 the sound as recorded.
    virtual void setVolume(double volume) = 0;
    /// 1 is the sound as recorded, 2 twice as fast.
    virtual void setRate(double rate) = 0;
    /// Plays from the start, also when it is already playing.
    virtual void playFromStart() = 0;
};

/// Makes the players. Main thread only.
class SoundPlayers {
public:
    SoundPlayers() = default;
    SoundPlayers(const SoundPlayers&) = delete;
    SoundPlayers& operator=(const SoundPlayers&) = delete;
    virtual ~SoundPlayers() = default;

    /// Empty when the file can't be played.
    [[nodiscard]] virtual std::unique_ptr<SoundPlayer> make(const QString& path) = 0;
};

} // namespace quorvin
