#include "platform/ProcessRunner.h"
#include "platform/linux/posix/PosixUpdateInstaller.h"
#include "support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class UpdateInstallerTest : public ::testing::Test {
protected:
    /// Launches a script of these lines, which leaves what it has to say in "$REPORT". That file
    /// appears when the script has ended.
    QByteArray report(const QByteArray& lines, const QString& name = u"qvn_update.sh"_s) {
        const QString path = directory.filePath(name);
        const QString result = directory.filePath(u"report"_s);
        QDir().mkpath(QFileInfo(path).path());
        QFile script(path);
        if (!script.open(QIODevice::WriteOnly)) {
            ADD_FAILURE();
            return {};
        }
        script.write("REPORT='" + result.toUtf8() + "'\n{\n" + lines +
                     "\n} > \"$REPORT.part\"\nmv \"$REPORT.part\" \"$REPORT\"\n");
        script.close();
        installer.launch(path);
        EXPECT_TRUE(eventually([&] { return QFile::exists(result); }));
        QFile file(result);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir directory;
    PosixUpdateInstaller installer;
};

} // namespace

TEST_F(UpdateInstallerTest, IsForArchives) {
    EXPECT_EQ(installer.script().imageName, u"Quorvin-update.tar.gz");
    EXPECT_EQ(UpdateInstaller::scriptName, u"qvn_update.sh");
}

TEST_F(UpdateInstallerTest, TheScriptIsNoChildAndInAnotherSession) {
    const QByteArrayList ids =
        report("cut -d' ' -f6 /proc/$$/stat; cut -d' ' -f5 /proc/$$/stat").split('\n');
    ASSERT_GE(ids.size(), 2);
    EXPECT_NE(ids.at(0).toInt(), ::getsid(0));
    EXPECT_NE(ids.at(1).toInt(), ::getpgrp());
    // Its parent, a child of this program, has gone, so that another has taken it over.
    QFile::remove(directory.filePath(u"report"_s));
    const QByteArray parent =
        report("while ps -o ppid= -p $(ps -o ppid= -p $$) | grep -qw " +
               QByteArray::number(::getpid()) + "; do :; done; ps -o ppid= -p $$");
    EXPECT_NE(parent.trimmed().toInt(), ::getpid());
    EXPECT_NE(parent.trimmed(), "");
}

TEST_F(UpdateInstallerTest, TheScriptHasNoDescriptorOfThisProgram) {
    const int leaky = ::open("/dev/zero", O_RDONLY); // NOLINT: without O_CLOEXEC on purpose
    ASSERT_NE(leaky, -1);
    const QByteArray descriptors = report("readlink /proc/$$/fd/*");
    ::close(leaky);
    EXPECT_FALSE(descriptors.contains("/dev/zero")) << descriptors.constData();
    EXPECT_TRUE(descriptors.startsWith("/dev/null\n")) << descriptors.constData();
}

TEST_F(UpdateInstallerTest, TheScriptHasTheEnvironmentOfThisProgram) {
    ASSERT_TRUE(qputenv("QUORVIN_TEST_VALUE", "unix:path=/a bus"));
    EXPECT_EQ(report("echo \"$QUORVIN_TEST_VALUE\""), "unix:path=/a bus\n");
    qunsetenv("QUORVIN_TEST_VALUE");
}

TEST_F(UpdateInstallerTest, ThePathOfTheScriptIsDataWhateverItHolds) {
    EXPECT_EQ(report("echo ran", u"it's a \"$(touch harm)\" `id` \\ & ; >x\n/qvn_update.sh"_s),
              "ran\n");
}

TEST_F(UpdateInstallerTest, NoTraceOfTheLaunchIsLeftAmongTheChildren) {
    (void)report("echo ran");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(UpdateInstallerTest, AShellThatCannotBeStartedIsAnError) {
    const QString endless(200'000, u'x'); // more than the system takes
    EXPECT_THROW(installer.launch(u'/' + endless), ProcessLaunchError);
}
