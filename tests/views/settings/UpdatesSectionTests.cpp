#include "SettingsViewTest.h"
#include "views/settings/UpdateStatus.h"

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class UpdatesSection : public SettingsViewTest {
protected:
    using Kind = PerformanceMetrics::Kind;

    void openWithUpdate(const QByteArray& manifest) {
        open(Tab::updates);
        network.answer(0, manifest);
    }
    void record(Kind kind, std::initializer_list<double> durations) {
        for (const double ms : durations) {
            PerformanceMetrics::shared().record(kind, ms);
        }
    }
    /// "last 812 ms" and so on, each with the colour of its value.
    [[nodiscard]] QList<std::pair<QString, QColor>> figures(const QString& label) {
        QList<std::pair<QString, QColor>> found;
        for (QQuickItem* chip : itemsIn(row(label), u"metricChip"_s)) {
            if (chip->isVisible()) {
                const QString name = chip->property("name").toString();
                found.append({name + u' ' + chip->property("text").toString(),
                              itemIn(chip, u"metricValue"_s)->property("color").value<QColor>()});
            }
        }
        return found;
    }
};

const QColor green(0x22, 0xc5, 0x5e);
const QColor amber(0xf5, 0x9e, 0x0b);
const QColor red(0xef, 0x44, 0x44);

} // namespace

TEST_F(UpdatesSection, HasItsRows) {
    open(Tab::updates);
    EXPECT_EQ(
        cards(),
        QStringList({u"Check for Updates: Current Version, Status, Auto-check on launch, "
                     u"Manual check"_s,
                     u"Performance Metrics: Transcription, Send, Session Scan, Model Load, "_s,
                     u"Release Notes — v1.2.3: "_s}));
    EXPECT_EQ(textOf(u"currentVersion"_s), u"1.2.3"_s);
    EXPECT_EQ(descriptionOf(u"Auto-check on launch"_s), u"Checks GitHub releases API"_s);
    EXPECT_EQ(textOf(u"autoCheckText"_s), u"Enabled"_s);
    EXPECT_EQ(textOf(u"checkNowButton"_s), u"Check Now"_s);
}

TEST_F(UpdatesSection, IsUpToDateWithoutAnUpdate) {
    open(Tab::updates);
    EXPECT_EQ(textOf(u"updateStatus"_s), u"Up to date"_s);
    EXPECT_TRUE(item(u"upToDateSymbol"_s)->isVisible());
    EXPECT_EQ(item(u"upToDateSymbol"_s)->property("name"), u"checkmark.circle.fill"_s);
    EXPECT_EQ(colorOf(u"upToDateSymbol"_s), green);
    EXPECT_FALSE(item(u"updateNowButton"_s)->isVisible());
}

TEST_F(UpdatesSection, InstallsAnUpdateAndTellsHowFarItIs) {
    openWithUpdate(R"({"version": "2.0.0", "dmg": "https://updates.test/new"})");
    EXPECT_EQ(textOf(u"updateStatus"_s), u"2.0.0 available"_s);
    EXPECT_FALSE(item(u"upToDateSymbol"_s)->isVisible());
    EXPECT_EQ(textOf(u"updateNowButton"_s), u"Update Now"_s);
    clickOn(u"updateNowButton"_s);
    scheduler.runPosted();
    ASSERT_EQ(network.downloads.size(), 1U);
    network.progress(0.426);
    scheduler.runPosted();
    EXPECT_EQ(textOf(u"updateStatus"_s), u"Downloading… 42%"_s);
    EXPECT_TRUE(item(u"updateNowButton"_s)->isVisible()) << "the update is still there";
    network.fail(u"<b>no network</b>"_s);
    scheduler.runPosted();
    EXPECT_EQ(textOf(u"updateStatus"_s), u"Failed: <b>no network</b>"_s);
    clickOn(u"updateNowButton"_s);
    scheduler.runPosted();
    network.finish();
    scheduler.runPosted();
    EXPECT_EQ(textOf(u"updateStatus"_s), u"Installing…"_s);
}

TEST_F(UpdatesSection, ALongFailureStaysInItsRow) {
    openWithUpdate(R"({"version": "2.0.0", "dmg": "https://updates.test/new"})");
    clickOn(u"updateNowButton"_s);
    scheduler.runPosted();
    network.fail(u"a failure with many words "_s.repeated(30));
    scheduler.runPosted();
    EXPECT_TRUE(item(u"updateStatus"_s)->property("truncated").toBool());
    EXPECT_GT(frameOf(u"updateStatus"_s).left(),
              frameOf(itemIn(row(u"Status"_s), u"rowLabel"_s)).left() + 40);
    EXPECT_LE(frameOf(u"updateNowButton"_s).right(), frameOf(u"cardGround"_s).right() - 16);
}

TEST_F(UpdatesSection, ChecksOnDemand) {
    open(Tab::updates);
    network.answer(0, std::nullopt);
    clickOn(u"checkNowButton"_s);
    scheduler.runPosted();
    ASSERT_EQ(network.requests.size(), 2U);
    EXPECT_FALSE(item(u"checkNowButton"_s)->isVisible());
    EXPECT_TRUE(item(u"checkingText"_s)->isVisible());
    EXPECT_EQ(textOf(u"checkingText"_s), u"Checking"_s);
    network.answer(1, R"({"version": "3.1"})");
    EXPECT_TRUE(item(u"checkNowButton"_s)->isVisible());
    EXPECT_FALSE(item(u"checkingText"_s)->isVisible());
    EXPECT_EQ(textOf(u"updateStatus"_s), u"3.1 available"_s);
}

TEST_F(UpdatesSection, ShowsTheMetrics) {
    open(Tab::updates);
    for (const QString& label : {u"Transcription"_s, u"Send"_s, u"Session Scan"_s}) {
        EXPECT_EQ(control(label, u"noDataText"_s)->property("text"), u"no data yet"_s);
        EXPECT_TRUE(control(label, u"noDataText"_s)->isVisible());
        EXPECT_TRUE(figures(label).isEmpty());
    }
    record(Kind::transcription, {900, 2400, 1500});
    record(Kind::modelLoad, {301});
    const QColor soft = figures(u"Transcription"_s).last().second;
    EXPECT_EQ(figures(u"Transcription"_s),
              (QList<std::pair<QString, QColor>>{{u"last 1500 ms"_s, amber},
                                                 {u"avg 1600 ms"_s, amber},
                                                 {u"min 900 ms"_s, green},
                                                 {u"max 2400 ms"_s, red},
                                                 {u"n 3"_s, soft}}));
    EXPECT_EQ(figures(u"Model Load"_s).first(), (std::pair{u"last 301 ms"_s, amber}));
    EXPECT_FALSE(control(u"Transcription"_s, u"noDataText"_s)->isVisible());
    EXPECT_TRUE(control(u"Send"_s, u"noDataText"_s)->isVisible());
    EXPECT_EQ(descriptionOf(QString()), u"Profiled via os_signpost (view in Instruments)"_s);
    EXPECT_EQ(textOf(u"clearMetricsButton"_s), u"Clear"_s);
    clickOn(u"clearMetricsButton"_s);
    EXPECT_TRUE(PerformanceMetrics::shared().samples().isEmpty());
    EXPECT_TRUE(control(u"Transcription"_s, u"noDataText"_s)->isVisible());
}

TEST_F(UpdatesSection, ListsWhatIsNew) {
    open(Tab::updates);
    const auto notes = items(u"releaseNote"_s);
    const auto expected = UpdateStatus::releaseNotes();
    ASSERT_EQ(notes.size(), expected.size());
    for (qsizetype i = 0; i < notes.size(); ++i) {
        QQuickItem* const symbol = itemIn(notes[i], u"infoSymbol"_s);
        EXPECT_EQ(symbol->property("name"), expected[i].symbol);
        EXPECT_EQ(symbol->property("color").value<QColor>(), expected[i].color);
        EXPECT_EQ(itemIn(notes[i], u"infoText"_s)->property("text"), expected[i].text);
    }
}
