#include "services/signals/SoundService.h"
#include "support/fakes/FakeApplicationBundle.h"
#include "support/fakes/FakeSoundPlayers.h"
#include "support/fakes/MemoryUserDefaults.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::FakeApplicationBundle;
using quorvin::testing::FakeSoundPlayers;
using quorvin::testing::MemoryUserDefaults;

namespace {

class SoundServiceTest : public ::testing::Test {
protected:
    SoundServiceTest() {
        for (const QString& name : {u"ui-sound"_s, u"ui-pop"_s, u"vinyl-stop"_s}) {
            bundle.resources[name + u".mp3"_s] = path(name);
        }
    }
    static QString path(const QString& name) { return u"/sounds/"_s + name; }
    [[nodiscard]] std::unique_ptr<SoundService> make() {
        return std::make_unique<SoundService>(players, bundle, defaults);
    }
    void expectSettings(const QString& name, double volume, double rate) {
        ASSERT_TRUE(players.settings.contains(path(name)));
        EXPECT_EQ(players.settings[path(name)].volume, volume);
        EXPECT_EQ(players.settings[path(name)].rate, rate);
    }

    FakeSoundPlayers players;
    FakeApplicationBundle bundle;
    MemoryUserDefaults defaults;
};

} // namespace

TEST_F(SoundServiceTest, ThePlayersHaveTheirVolumesAndRates) {
    const auto sounds = make();
    expectSettings(u"ui-sound"_s, 0.22, 1.5);
    expectSettings(u"ui-pop"_s, 0.18, 1.0);
    expectSettings(u"vinyl-stop"_s, 0.22, 1.6);
    EXPECT_TRUE(players.played.isEmpty());
}

TEST_F(SoundServiceTest, EachPlayerPlaysItsSoundAsOftenAsAsked) {
    const auto sounds = make();
    for (const auto* player : {&sounds->uiSoundPlayer, &sounds->popPlayer, &sounds->vinylStopPlayer,
                               &sounds->popPlayer}) {
        sounds->play(player->get());
    }
    EXPECT_EQ(players.played, (QStringList{path(u"ui-sound"_s), path(u"ui-pop"_s),
                                           path(u"vinyl-stop"_s), path(u"ui-pop"_s)}));
}

TEST_F(SoundServiceTest, SoundsAreOnWhenNothingIsStored) {
    EXPECT_TRUE(make()->isEnabled);
}

TEST_F(SoundServiceTest, TheStoredSettingDecides) {
    defaults.setBoolean(u"soundsEnabled"_s, false);
    EXPECT_FALSE(make()->isEnabled);
    defaults.setBoolean(u"soundsEnabled"_s, true);
    EXPECT_TRUE(make()->isEnabled);
}

TEST_F(SoundServiceTest, AStoredValueOfAnotherTypeReadsAsFalse) {
    defaults.setString(u"soundsEnabled"_s, u"loud"_s);
    EXPECT_FALSE(make()->isEnabled);
}

TEST_F(SoundServiceTest, SwitchedOffNothingPlaysAndThePlayersStayReady) {
    const auto sounds = make();
    sounds->isEnabled = false;
    sounds->play(sounds->popPlayer.get());
    EXPECT_TRUE(players.played.isEmpty());
    sounds->isEnabled = true;
    sounds->play(sounds->popPlayer.get());
    EXPECT_EQ(players.played, QStringList{path(u"ui-pop"_s)});
}

TEST_F(SoundServiceTest, AVolumeStaysAsItWasSet) {
    const auto sounds = make();
    sounds->popPlayer->setVolume(0.3);
    sounds->play(sounds->popPlayer.get());
    sounds->play(sounds->popPlayer.get());
    expectSettings(u"ui-pop"_s, 0.3, 1.0);
}

TEST_F(SoundServiceTest, AMissingResourceLeavesItsPlayerEmpty) {
    bundle.resources.erase(u"ui-pop.mp3"_s);
    const auto sounds = make();
    EXPECT_FALSE(sounds->popPlayer);
    EXPECT_TRUE(sounds->uiSoundPlayer);
    sounds->play(sounds->popPlayer.get());
    EXPECT_TRUE(players.played.isEmpty());
}

TEST_F(SoundServiceTest, AFileThatIsNoSoundLeavesItsPlayerEmpty) {
    players.unplayable.insert(path(u"vinyl-stop"_s));
    const auto sounds = make();
    EXPECT_FALSE(sounds->vinylStopPlayer);
    EXPECT_TRUE(sounds->popPlayer);
}

TEST_F(SoundServiceTest, SharedIsTheLivingInstance) {
    const auto sounds = make();
    EXPECT_EQ(&SoundService::shared(), sounds.get());
}

TEST_F(SoundServiceTest, AnOlderInstanceMayGoLater) {
    auto older = make();
    const auto newer = make();
    older.reset();
    EXPECT_EQ(&SoundService::shared(), newer.get());
}
