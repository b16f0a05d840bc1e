// The script of an update, run by a real shell on real directories.

#include "platform/UpdateScript.h"
#include "support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

// clang-format off
constexpr const char* programThatTellsOfItself = R"sh(#!/bin/bash
bundle="$(dirname "$(dirname "$0")")"
{
    cat "$bundle/share/quorvin/version"; echo
    echo "$DISPLAY"
    pwd
    grep SigIgn /proc/self/status
} > "$bundle/started.part"
mv "$bundle/started.part" "$bundle/started"
)sh";
// clang-format on

class UpdateReplacement : public ::testing::Test {
protected:
    UpdateReplacement() { layOut(u"Applications"_s, u"tmp"_s); }

    /// An installed bundle "old" and room for temporary files, below directories of these names.
    void layOut(const QString& applications, const QString& temporary) {
        parent = directory.filePath(applications);
        app = parent + u"/Quorvin.app"_s;
        tmp = directory.filePath(temporary);
        ASSERT_TRUE(QDir().mkpath(tmp));
        makeBundle(app, "old");
        archive = tmp + u"/Quorvin-update.tar.gz"_s;
    }

    /// A bundle whose program tells about itself in a file "started" in the bundle.
    static void makeBundle(const QString& path, const QByteArray& version) {
        ASSERT_TRUE(QDir().mkpath(path + u"/bin"_s));
        ASSERT_TRUE(QDir().mkpath(path + u"/share/quorvin"_s));
        write(path + u"/share/quorvin/version"_s, version);
        write(path + u"/bin/quorvin"_s, programThatTellsOfItself);
        ASSERT_TRUE(QFile::setPermissions(path + u"/bin/quorvin"_s,
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    static void write(const QString& path, const QByteArray& contents) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(contents);
    }
    [[nodiscard]] static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The download: an archive of `content`, a file or directory of the build directory.
    void makeArchive(const QString& content = u"Quorvin.app"_s) const {
        const QString build = directory.filePath(u"build"_s);
        makeBundle(build + u"/Quorvin.app"_s, "new");
        makeBundle(build + u"/Other.app"_s, "other");
        ASSERT_EQ(QProcess::execute(u"tar"_s, {u"-czf"_s, archive, u"-C"_s, build, content}), 0);
    }
    void truncateArchive() const {
        ASSERT_TRUE(QFile::resize(archive, QFileInfo(archive).size() / 2));
    }

    /// Starts the script for a process of that number, by way of `prefix`.
    void start(qint64 processIdentifier, const QStringList& prefix = {}) {
        const QString path = tmp + u"/qvn_update.sh"_s;
        write(
            path,
            archiveUpdateScript().text(archive, app, static_cast<int>(processIdentifier)).toUtf8());
        QStringList command = prefix + QStringList{u"bash"_s, path};
        script.start(command.takeFirst(), command);
        ASSERT_TRUE(script.waitForStarted());
    }
    [[nodiscard]] int exitCode() {
        EXPECT_TRUE(script.waitForFinished());
        EXPECT_EQ(script.exitStatus(), QProcess::NormalExit);
        return script.exitCode();
    }
    /// Runs it for a process that has gone.
    [[nodiscard]] int run(const QStringList& prefix = {}) {
        start(pidOfTheDead(), prefix);
        return exitCode();
    }
    [[nodiscard]] static qint64 pidOfTheDead() {
        QProcess process;
        process.start(u"true"_s, QStringList());
        process.waitForStarted();
        const qint64 number = process.processId();
        process.waitForFinished();
        return number;
    }

    [[nodiscard]] QByteArray version() const { return read(app + u"/share/quorvin/version"_s); }
    [[nodiscard]] QByteArrayList started() const { return read(app + u"/started"_s).split('\n'); }
    [[nodiscard]] QStringList besideTheBundle() const {
        return QDir(parent).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                      QDir::NoDotAndDotDot);
    }
    /// The old bundle is where it was, whole, alone and not running.
    void expectNothingChanged() const {
        EXPECT_EQ(version(), "old");
        EXPECT_TRUE(QFile::exists(app + u"/bin/quorvin"_s));
        EXPECT_FALSE(QFile::exists(app + u"/started"_s));
        EXPECT_EQ(besideTheBundle(), QStringList{QFileInfo(app).fileName()});
    }

    /// What makes a command that of a user whom permissions bind and who owns everything here.
    [[nodiscard]] QStringList asOrdinaryUser() const {
        if (geteuid() != 0) {
            return {};
        }
        EXPECT_EQ(QProcess::execute(u"chown"_s, {u"-R"_s, u"65534"_s, directory.path()}), 0);
        return {u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s};
    }

    /// Puts a program in the way of the one of that name.
    void shadow(const QString& name, const QByteArray& body) {
        const QString bin = directory.filePath(u"shadow"_s);
        ASSERT_TRUE(QDir().mkpath(bin));
        const QString path = bin + u'/' + name;
        write(path, "#!/bin/bash\n" + body);
        ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, bin + u':' + environment.value(u"PATH"_s));
        script.setProcessEnvironment(environment);
    }

    QTemporaryDir directory;
    QString parent;
    QString app;
    QString tmp;
    QString archive;
    QProcess script;
};

class UpdateReplacementAtPath : public UpdateReplacement,
                                public ::testing::WithParamInterface<const char16_t*> {};

} // namespace

TEST_F(UpdateReplacement, TheNewBundleStandsAndRunsAndNothingElseIsLeft) {
    makeArchive();
    EXPECT_EQ(run(), 0) << script.readAllStandardError().constData();
    EXPECT_EQ(version(), "new");
    EXPECT_EQ(started().at(0), "new");
    EXPECT_EQ(besideTheBundle(), QStringList{u"Quorvin.app"_s});
    EXPECT_EQ(QDir(tmp).entryList(QDir::Files), QStringList{u"qvn_update.sh"_s});
}

TEST_F(UpdateReplacement, TheInstalledNameIsKept) {
    ASSERT_TRUE(QFile::rename(app, parent + u"/Dictation.app"_s));
    app = parent + u"/Dictation.app"_s;
    makeArchive();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(version(), "new");
    EXPECT_EQ(besideTheBundle(), QStringList{u"Dictation.app"_s});
}

TEST_F(UpdateReplacement, FilesThatTheNewBundleLacksAreGone) {
    write(app + u"/share/stale"_s, "old");
    makeArchive();
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(QFile::exists(app + u"/share/stale"_s));
}

TEST_F(UpdateReplacement, TheNewProgramStartsAsFromADesktop) {
    makeArchive();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, u":42"_s);
    script.setProcessEnvironment(environment);
    script.setWorkingDirectory(app + u"/share"_s);
    // With the signals ignored that the launch leaves so.
    EXPECT_EQ(run({u"bash"_s, u"-c"_s, u"trap '' HUP INT QUIT; exec \"$@\""_s, u"bash"_s}), 0);
    ASSERT_GE(started().size(), 4);
    EXPECT_EQ(started().at(1), ":42");
    EXPECT_EQ(started().at(2), "/");
    EXPECT_EQ(started().at(3).toLower(), "sigign:\t0000000000000000");
}

TEST_F(UpdateReplacement, WaitsAsLongAsTheProcessLives) {
    makeArchive();
    QProcess program;
    program.start(u"sleep"_s, {u"1000"_s});
    ASSERT_TRUE(program.waitForStarted());
    const QString looks = directory.filePath(u"looks"_s);
    shadow(u"sleep"_s, "echo \"$*\" >> '" + looks.toUtf8() + "'\nexec /bin/sleep 0.001\n");
    start(program.processId());
    EXPECT_TRUE(eventually([&] { return read(looks).count('\n') > 100; }));
    EXPECT_EQ(version(), "old");
    EXPECT_TRUE(read(looks).startsWith("0.3\n"));
    program.kill();
    program.waitForFinished();
    EXPECT_EQ(exitCode(), 0);
    EXPECT_EQ(version(), "new");
}

TEST_F(UpdateReplacement, ATruncatedArchiveChangesNothing) {
    makeArchive();
    truncateArchive();
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AnArchiveThatLacksOnlyItsEndChangesNothing) {
    makeArchive();
    ASSERT_TRUE(QFile::resize(archive, QFileInfo(archive).size() - 1));
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AnErrorPageChangesNothing) {
    write(archive, "<html><body>404 Not Found</body></html>\n");
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AnEmptyOrMissingDownloadChangesNothing) {
    EXPECT_NE(run(), 0);
    expectNothingChanged();
    write(archive, "");
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AnArchiveOfSomethingElseChangesNothing) {
    makeArchive(u"Other.app"_s);
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, ABundleWithoutItsProgramChangesNothing) {
    makeArchive(u"Quorvin.app/share"_s);
    EXPECT_NE(run(), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AFullDiskChangesNothing) {
    makeArchive();
    const QString noFileGrows = u"trap '' XFSZ; ulimit -f 0; exec \"$@\""_s;
    EXPECT_NE(run({u"bash"_s, u"-c"_s, noFileGrows, u"bash"_s}), 0);
    expectNothingChanged();
}

TEST_F(UpdateReplacement, AParentThatCannotBeWrittenToChangesNothing) {
    makeArchive();
    ASSERT_TRUE(QFile::setPermissions(parent, QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_NE(run(asOrdinaryUser()), 0);
    ASSERT_TRUE(
        QFile::setPermissions(parent, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    expectNothingChanged();
}

TEST_F(UpdateReplacement, ABundleThatCannotBeWrittenToIsReplacedAllTheSame) {
    const QString build = directory.filePath(u"build/Quorvin.app"_s);
    makeBundle(build, "new");
    ASSERT_TRUE(QFile::setPermissions(build, QFile::ReadOwner | QFile::ExeOwner));
    ASSERT_EQ(QProcess::execute(u"tar"_s, {u"-czf"_s, archive, u"-C"_s,
                                           directory.filePath(u"build"_s), u"Quorvin.app"_s}),
              0);
    EXPECT_EQ(run(asOrdinaryUser()), 0);
    EXPECT_EQ(version(), "new");
    ASSERT_TRUE(
        QFile::setPermissions(build, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST_F(UpdateReplacement, TheOldBundleOutlivesASwapThatIsCutShort) {
    makeArchive();
    const QString moves = directory.filePath(u"moves"_s);
    shadow(u"mv"_s, "[ -e '" + moves.toUtf8() + "' ] && exit 1\ntouch '" + moves.toUtf8() +
                        "'\nexec /bin/mv \"$@\"\n");
    EXPECT_NE(run(), 0);
    ASSERT_EQ(besideTheBundle().size(), 1);
    const QString kept = parent + u'/' + besideTheBundle().constFirst() + u"/old"_s;
    EXPECT_EQ(read(kept + u"/share/quorvin/version"_s), "old");
    EXPECT_TRUE(QFile::exists(kept + u"/bin/quorvin"_s));
}

TEST_P(UpdateReplacementAtPath, IsDataForTheScript) {
    const QString name = QString::fromUtf16(GetParam());
    layOut(name + u" apps"_s, name + u" tmp"_s);
    makeArchive();
    script.setWorkingDirectory(tmp);
    EXPECT_EQ(run(), 0) << script.readAllStandardError().constData();
    EXPECT_EQ(version(), "new");
    EXPECT_EQ(started().at(0), "new");
    EXPECT_EQ(besideTheBundle(), QStringList{u"Quorvin.app"_s});
    EXPECT_EQ(QDir(tmp).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"qvn_update.sh"_s});
}

INSTANTIATE_TEST_SUITE_P(Names, UpdateReplacementAtPath,
                         ::testing::Values(u"with blank", u"it's", u"\"quoted\"", u"$HOME",
                                           u"$(touch harm)", u"`touch harm`", u"back\\slash",
                                           u"two\nlines", u"*?[a]", u"; touch harm; #",
                                           u"grüße 👩‍👩‍👧", u"-rf"));
