#include "AppStateFixture.h"

#include <QFileInfo>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto privateFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr auto privateProgram = privateFile | QFile::ExeOwner;

class InstallUpdate : public AppStateTest {
protected:
    /// Starts a program that has been told of a newer build.
    AppState& startWithUpdate(const QString& address = u"https://a/b.tar.gz"_s) {
        AppState& state = start();
        QObject::connect(&state, &AppState::updatePhaseChanged, &state,
                         [this, &state] { phases.append(state.updatePhase().kind()); });
        scheduler.runPosted();
        const QString manifest = uR"({"version": "2.0", "dmg": "%1"})"_s;
        network.answer(network.requests.size() - 1, manifest.arg(address).toUtf8());
        return state;
    }

    /// Starts one whose download is under way.
    AppState& startDownload() {
        AppState& state = startWithUpdate();
        state.installUpdate();
        scheduler.runPosted();
        return state;
    }

    [[nodiscard]] QString temporaryPath(const QString& name) const {
        return bundle.temporary + u'/' + name;
    }
    [[nodiscard]] QString image() const { return temporaryPath(u"Quorvin-update.tar.gz"_s); }
    [[nodiscard]] QString script() const { return temporaryPath(u"qvn_update.sh"_s); }
    [[nodiscard]] static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Without those of the user, which are the owner's here.
    [[nodiscard]] static QFile::Permissions permissions(const QString& path) {
        return QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    }
    [[nodiscard]] QStringList temporaryFiles() const {
        return QDir(bundle.temporary).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    /// The kinds that the phase has gone through.
    QStringList phases;
};

UpdatePhase downloading(double fraction) {
    return {UpdatePhase::Downloading{fraction}};
}

UpdatePhase failed(const QString& message) {
    return {UpdatePhase::Failed{message}};
}

const UpdatePhase installing{UpdatePhase::Installing{}};

} // namespace

TEST_F(InstallUpdate, WithoutAnAddressItFailsAndNothingIsOpened) {
    for (const QString& address : {u""_s, u"https://bad host:port"_s}) {
        AppState& state = startWithUpdate(address);
        state.installUpdate();
        scheduler.runPosted();
        EXPECT_EQ(state.updatePhase(), failed(u"No download URL"_s));
    }
    EXPECT_TRUE(workspace.openedURLs.empty());
    EXPECT_TRUE(network.downloads.empty());
}

TEST_F(InstallUpdate, WhereTheUserCannotWriteTheAddressIsOpened) {
    bundle.path = u"/opt/Quorvin.app"_s;
    AppState& state = startWithUpdate();
    state.installUpdate();
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), failed(u"Can't write to /opt — opening DMG"_s));
    EXPECT_EQ(workspace.openedURLs, std::vector{u"https://a/b.tar.gz"_s});
    EXPECT_TRUE(network.downloads.empty());
}

TEST_F(InstallUpdate, WhatIsNoBundleIsNotReplacedEvenWhereTheUserCanWrite) {
    bundle.path = u"/nowhere/Applications/quorvin"_s;
    AppState& state = startWithUpdate();
    state.installUpdate();
    EXPECT_EQ(state.updatePhase(), failed(u"Can't write to /nowhere/Applications — opening DMG"_s));
    EXPECT_EQ(workspace.openedURLs.size(), 1U);
    scheduler.runPosted();
    EXPECT_TRUE(network.downloads.empty());
}

TEST_F(InstallUpdate, ABundleAtTheRootHasTheRootAsItsParent) {
    bundle.path = u"/Quorvin.app"_s;
    AppState& state = startWithUpdate();
    state.installUpdate();
    EXPECT_EQ(state.updatePhase(), failed(u"Can't write to / — opening DMG"_s));
}

TEST_F(InstallUpdate, DownloadsToTheTemporaryDirectory) {
    AppState& state = startWithUpdate();
    state.installUpdate();
    EXPECT_EQ(state.updatePhase(), downloading(0));
    EXPECT_TRUE(network.downloads.empty());
    scheduler.runPosted();
    ASSERT_EQ(network.downloads.size(), 1U);
    EXPECT_EQ(network.downloads.front().url, QUrl(u"https://a/b.tar.gz"_s));
    EXPECT_EQ(network.downloads.front().directory, bundle.temporary);
    EXPECT_TRUE(workspace.openedURLs.empty());
}

TEST_F(InstallUpdate, ShowsTheProgress) {
    AppState& state = startDownload();
    network.progress(0.25);
    EXPECT_EQ(state.updatePhase(), downloading(0));
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), downloading(0.25));
    network.progress(0.75);
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), downloading(0.75));
}

TEST_F(InstallUpdate, WithoutAKnownSizeTheProgressStaysAtNothing) {
    AppState& state = startDownload();
    network.progress(1000, -1);
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), downloading(0));
    network.finish();
    EXPECT_EQ(state.updatePhase(), installing);
}

TEST_F(InstallUpdate, ASecondPressDoesNothing) {
    AppState& state = startDownload();
    network.progress(0.5);
    scheduler.runPosted();
    state.installUpdate();
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), downloading(0.5));
    network.finish();
    state.installUpdate();
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), installing);
    EXPECT_EQ(network.downloads.size(), 1U);
    EXPECT_EQ(updateInstaller.launched.size(), 1);
}

TEST_F(InstallUpdate, LaunchesTheScriptThatReplacesThisProcessAndItsBundle) {
    AppState& state = startDownload();
    network.finish("the build");
    EXPECT_EQ(state.updatePhase(), installing);
    EXPECT_EQ(updateInstaller.launched, QStringList{script()});
    EXPECT_EQ(contents(script()),
              archiveUpdateScript().text(image(), bundle.path, bundle.pid).toUtf8());
    EXPECT_EQ(contents(image()), "the build");
}

TEST_F(InstallUpdate, TheTextOfTheScriptIsThatOfTheSystem) {
    updateInstaller.scriptOfTheSystem = diskImageUpdateScript();
    startDownload();
    network.finish("the build");
    EXPECT_EQ(contents(temporaryPath(u"Quorvin-update.dmg"_s)), "the build");
    EXPECT_TRUE(contents(script()).contains("\nhdiutil attach \"$DMG\""));
}

TEST_F(InstallUpdate, BothFilesAreTheUsersAlone) {
    startDownload();
    network.finish();
    EXPECT_EQ(permissions(image()), privateFile);
    EXPECT_EQ(permissions(script()), privateProgram);
}

TEST_F(InstallUpdate, EndsTheProgramHalfASecondAfterTheLaunch) {
    startDownload();
    network.finish();
    scheduler.advance(499ms);
    EXPECT_EQ(terminations, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(terminations, 1);
    EXPECT_TRUE(QFile::exists(script()));
}

TEST_F(InstallUpdate, AProgressThatComesLateOverwritesInstalling) {
    AppState& state = startDownload();
    network.progress(1);
    network.finish();
    EXPECT_EQ(state.updatePhase(), installing);
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), downloading(1));
    scheduler.advance(500ms);
    EXPECT_EQ(terminations, 1);
}

TEST_F(InstallUpdate, ADownloadThatFailsIsToldAndTheProgramStays) {
    AppState& state = startDownload();
    network.fail(u"Host a not found"_s);
    EXPECT_EQ(state.updatePhase(), failed(u"Host a not found"_s));
    scheduler.advance(1min);
    EXPECT_EQ(terminations, 0);
    EXPECT_TRUE(updateInstaller.launched.isEmpty());
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST_F(InstallUpdate, AfterAFailureItStartsAgain) {
    AppState& state = startDownload();
    network.fail(u"Host a not found"_s);
    state.installUpdate();
    EXPECT_EQ(state.updatePhase(), downloading(0));
    scheduler.runPosted();
    network.finish();
    EXPECT_EQ(updateInstaller.launched.size(), 1);
    EXPECT_EQ(phases,
              (QStringList{u"downloading"_s, u"failed"_s, u"downloading"_s, u"installing"_s}));
}

TEST_F(InstallUpdate, ARetryGoesByWayOfIdle) {
    AppState& state = startDownload();
    network.fail(u"Host a not found"_s);
    state.retryUpdate();
    scheduler.runPosted();
    EXPECT_EQ(network.downloads.size(), 2U);
    EXPECT_EQ(phases, (QStringList{u"downloading"_s, u"failed"_s, u"idle"_s, u"downloading"_s}));
}

TEST_F(InstallUpdate, ARetryDuringADownloadDoesNothing) {
    AppState& state = startDownload();
    state.retryUpdate();
    scheduler.runPosted();
    EXPECT_EQ(network.downloads.size(), 1U);
    EXPECT_EQ(phases, QStringList{u"downloading"_s});
}

TEST_F(InstallUpdate, AProgressThatComesLateLeavesAFailure) {
    AppState& state = startDownload();
    network.progress(0.5);
    network.fail(u"Connection closed"_s);
    scheduler.runPosted();
    EXPECT_EQ(state.updatePhase(), failed(u"Connection closed"_s));
}

TEST_F(InstallUpdate, AnOldDownloadIsReplaced) {
    QFile old(image());
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("an older and longer build");
    old.close();
    startDownload();
    network.finish("the build");
    EXPECT_EQ(contents(image()), "the build");
}

TEST_F(InstallUpdate, ADownloadThatCannotBeMovedIsAFailure) {
    ASSERT_TRUE(QDir().mkpath(image() + u"/in the way"_s));
    AppState& state = startDownload();
    network.finish();
    EXPECT_EQ(state.updatePhase().kind(), u"failed");
    EXPECT_FALSE(state.updatePhase().message().isEmpty());
    EXPECT_TRUE(updateInstaller.launched.isEmpty());
}

TEST_F(InstallUpdate, AScriptThatCannotBeWrittenIsAFailureAndLeavesNoTrace) {
    ASSERT_TRUE(QDir().mkpath(script() + u"/in the way"_s));
    AppState& state = startDownload();
    network.finish();
    EXPECT_EQ(state.updatePhase(), failed(u"Is a directory"_s));
    EXPECT_TRUE(updateInstaller.launched.isEmpty());
    EXPECT_EQ(temporaryFiles(), (QStringList{u"Quorvin-update.tar.gz"_s, u"qvn_update.sh"_s}));
    scheduler.advance(1s);
    EXPECT_EQ(terminations, 0);
}

TEST_F(InstallUpdate, ATemporaryDirectoryThatIsGoneIsAFailure) {
    AppState& state = startDownload();
    network.finish();
    EXPECT_EQ(state.updatePhase(), installing);
    endProgram();

    AppState& next = startDownload();
    const QString elsewhere = bundle.temporary;
    bundle.temporary = directory.filePath(u"gone"_s); // the script's place, asked for later
    network.finish();
    EXPECT_EQ(next.updatePhase().kind(), u"failed");
    EXPECT_FALSE(next.updatePhase().message().isEmpty());
    bundle.temporary = elsewhere;
}

TEST_F(InstallUpdate, ALinkInThePlaceOfTheScriptIsReplacedAndNotFollowed) {
    const QString victim = directory.filePath(u"victim"_s);
    ASSERT_TRUE(QFile::link(victim, script()));
    startDownload();
    network.finish();
    EXPECT_FALSE(QFile::exists(victim));
    EXPECT_FALSE(QFileInfo(script()).isSymLink());
    EXPECT_EQ(updateInstaller.launched.size(), 1);
}

TEST_F(InstallUpdate, AShellThatCannotBeLaunchedIsAFailure) {
    updateInstaller.launchError = "No such file or directory";
    AppState& state = startDownload();
    network.finish();
    EXPECT_EQ(state.updatePhase(), failed(u"No such file or directory"_s));
    scheduler.advance(1s);
    EXPECT_EQ(terminations, 0);
}

TEST_F(InstallUpdate, AProgramThatHasEndedInstallsNothing) {
    startDownload();
    network.progress(0.5);
    endProgram();
    scheduler.runPosted();
    network.finish();
    scheduler.advance(1s);
    EXPECT_TRUE(updateInstaller.launched.isEmpty());
    EXPECT_EQ(terminations, 0);
}

TEST_F(InstallUpdate, AProgramThatEndsBeforeItsTimeIsNotEndedTwice) {
    startDownload();
    network.finish();
    endProgram();
    scheduler.advance(1s);
    EXPECT_EQ(terminations, 0);
}
