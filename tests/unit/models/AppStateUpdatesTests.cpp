#include "AppStateFixture.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class UpdateCheck : public AppStateTest {
protected:
    /// Starts a program of that version; the check of its start is under way.
    AppState& startVersion(const std::optional<QString>& version) {
        bundle.installedVersion = version;
        AppState& app = start();
        scheduler.runPosted();
        return app;
    }

    AppState& startAndAnswer(const std::optional<QString>& version,
                             const std::optional<QByteArray>& body) {
        AppState& app = startVersion(version);
        network.answer(0, body);
        return app;
    }

    [[nodiscard]] int announcements() const {
        return static_cast<int>(feed().filter(u"Update available"_s).size());
    }
};

} // namespace

TEST_F(UpdateCheck, AsksOnceAtStartWithTheTimeInTheAddress) {
    bundle.endpoint = u"https://updates.test/quorvin"_s;
    startVersion(u"1.0"_s);
    scheduler.advance(24h);
    ASSERT_EQ(network.requests.size(), 1U);
    const auto& request = network.requests.front();
    EXPECT_EQ(request.url.adjusted(QUrl::RemoveQuery),
              QUrl(u"https://updates.test/quorvin/builds/latest.json"_s));
    EXPECT_EQ(request.accept, "application/json");
    EXPECT_EQ(request.timeout, 10s);
    EXPECT_EQ(request.url.query(),
              u"ts=%1"_s.arg(scheduler.wallTime().addSecs(-24 * 60 * 60).toSecsSinceEpoch()));
}

TEST_F(UpdateCheck, RunsBeforeTheModelIsLoadedButAfterTheStartItself) {
    bundle.installedVersion = u"1.0"_s;
    start();
    EXPECT_TRUE(network.requests.empty());
    scheduler.runPosted();
    EXPECT_EQ(network.requests.size(), 1U);
}

TEST_F(UpdateCheck, ALaterVersionIsAnnouncedWithItsAddress) {
    const AppState& app =
        startAndAnswer(u"1.9.0"_s, R"({"version": "v1.10.0", "dmg": "https://a/b.dmg"})");
    EXPECT_TRUE(app.updateAvailable());
    EXPECT_EQ(app.latestVersion(), u"1.10.0");
    EXPECT_EQ(app.latestDownloadURL(), u"https://a/b.dmg");
    EXPECT_EQ(feed(ActivityType::info).last(), u"Update available: v1.10.0");
}

TEST_F(UpdateCheck, TheSameVersionWithALeadingVIsNotLater) {
    const AppState& app = startAndAnswer(u"1.2.3"_s, R"({"version": "v1.2.3"})");
    EXPECT_FALSE(app.updateAvailable());
    EXPECT_EQ(app.latestVersion(), u"");
    EXPECT_EQ(announcements(), 0);
}

TEST_F(UpdateCheck, OnlyOneLeadingVIsRemoved) {
    const AppState& app = startAndAnswer(u"1.0"_s, R"({"version": "vv1.0"})");
    EXPECT_EQ(app.latestVersion(), u"v1.0");
}

TEST_F(UpdateCheck, ABundleWithoutAVersionComparesAsZero) {
    EXPECT_TRUE(startAndAnswer(std::nullopt, R"({"version": "0.0.1"})").updateAvailable());
}

TEST_F(UpdateCheck, AManifestWithoutAnAddressAnnouncesAllTheSame) {
    const AppState& app = startAndAnswer(u"1.0"_s, R"({"version": "2.0"})");
    EXPECT_TRUE(app.updateAvailable());
    EXPECT_EQ(app.latestDownloadURL(), u"");
}

TEST_F(UpdateCheck, AFailureOfAnyKindChangesNothingAndSaysNothing) {
    AppState& app = startAndAnswer(u"1.0"_s, R"({"version": "2.0", "dmg": "https://a/b"})");
    const QStringList before = feed();
    const std::vector<std::optional<QByteArray>> failures = {
        std::nullopt, "", "<html>404 Not Found</html>", R"({"notes": "no version"})",
        R"({"version": 3})"};
    std::size_t number = 1;
    for (const auto& failure : failures) {
        app.checkForUpdates();
        network.answer(number++, failure);
        EXPECT_TRUE(app.updateAvailable());
        EXPECT_EQ(app.latestVersion(), u"2.0");
        EXPECT_EQ(app.latestDownloadURL(), u"https://a/b");
    }
    EXPECT_EQ(feed(), before);
}

TEST_F(UpdateCheck, NothingNewerTakesTheBannerAwayAndKeepsTheTexts) {
    AppState& app = startAndAnswer(u"1.0"_s, R"({"version": "2.0", "dmg": "https://a/b"})");
    app.checkForUpdates();
    network.answer(1, R"({"version": "1.0"})");
    EXPECT_FALSE(app.updateAvailable());
    EXPECT_EQ(app.latestVersion(), u"2.0");
    EXPECT_EQ(app.latestDownloadURL(), u"https://a/b");
}

TEST_F(UpdateCheck, OfTwoThatOverlapTheLastToFinishWins) {
    AppState& app = startVersion(u"1.0"_s);
    app.checkForUpdates();
    network.answer(1, R"({"version": "3.0"})");
    network.answer(0, R"({"version": "2.0"})");
    EXPECT_EQ(app.latestVersion(), u"2.0");
}

TEST_F(UpdateCheck, AnAddressThatCannotBeFormedEndsTheCheck) {
    bundle.endpoint = u"https://bad host:port"_s;
    EXPECT_FALSE(startVersion(u"1.0"_s).updateAvailable());
    EXPECT_TRUE(network.requests.empty());
}

TEST_F(UpdateCheck, AnAnswerAfterTheEndOfTheProgramIsIgnored) {
    startVersion(u"1.0"_s);
    const QStringList before = banners();
    endProgram();
    network.answer(0, R"({"version": "2.0"})");
    EXPECT_EQ(network.requests.size(), 1U);
    EXPECT_EQ(banners(), before);
}
