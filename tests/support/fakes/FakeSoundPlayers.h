#pragma once

#include "platform/SoundPlayer.h"

#include <QStringList>

#include <map>
#include <set>

namespace quorvin::testing {

/// Players without a loudspeaker, which tell what they were made to do. They may not outlive it.
class FakeSoundPlayers final : public SoundPlayers {
public:
    struct Settings {
        double volume = 1;
        double rate = 1;
    };

    [[nodiscard]] std::unique_ptr<SoundPlayer> make(const QString& path) override {
        if (unplayable.contains(path)) {
            return nullptr;
        }
        settings[path] = {};
        return std::make_unique<Player>(*this, path);
    }

    /// Files that are no sounds.
    std::set<QString> unplayable;

    /// How each player stands now, by the path of its file.
    std::map<QString, Settings> settings;
    /// The path of every sound that was started, in order.
    QStringList played;

private:
    class Player final : public SoundPlayer {
    public:
        Player(FakeSoundPlayers& owner, const QString& path) : m_owner(owner), m_path(path) {}

        void setVolume(double volume) override { m_owner.settings[m_path].volume = volume; }
        void setRate(double rate) override { m_owner.settings[m_path].rate = rate; }
        void playFromStart() override { m_owner.played.append(m_path); }

    private:
        FakeSoundPlayers& m_owner;
        QString m_path;
    };
};

} // namespace quorvin::testing
