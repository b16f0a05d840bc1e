#include "models/UpdateDownloader.h"
#include "support/fakes/FakeHttpClient.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class UpdateDownloaderTest : public ::testing::Test {
protected:
    Task<> start() {
        try {
            const QString path = co_await downloader.download(QUrl(u"https://a/b.dmg"_s));
            result = path;
        } catch (const DownloadError& failure) {
            error = QString::fromUtf8(failure.what());
        }
    }

    void write(const QByteArray& contents) const {
        QFile file(destination);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }
    [[nodiscard]] QByteArray contents() const {
        QFile file(destination);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir directory;
    const QString destination = directory.filePath(u"Quorvin-update.tar.gz"_s);
    std::vector<double> fractions;
    std::optional<QString> result;
    std::optional<QString> error;
    FakeHttpClient network;
    UpdateDownloader downloader{network, destination,
                                [this](double fraction) { fractions.push_back(fraction); }};
};

} // namespace

TEST_F(UpdateDownloaderTest, PutsTheFileAtItsDestination) {
    start();
    ASSERT_EQ(network.downloads.size(), 1U);
    EXPECT_EQ(network.downloads.front().url, QUrl(u"https://a/b.dmg"_s));
    EXPECT_EQ(network.downloads.front().directory, directory.path());
    EXPECT_EQ(network.downloads.front().timeout, 60s);
    EXPECT_EQ(result, std::nullopt);
    network.finish("new");
    EXPECT_EQ(result, destination);
    EXPECT_EQ(contents(), "new");
    EXPECT_EQ(files(), QStringList{u"Quorvin-update.tar.gz"_s});
}

TEST_F(UpdateDownloaderTest, TellsTheFraction) {
    start();
    network.progress(0, 400);
    network.progress(100, 400);
    network.progress(400, 400);
    EXPECT_EQ(fractions, (std::vector<double>{0, 0.25, 1}));
    network.finish();
}

TEST_F(UpdateDownloaderTest, WithoutAKnownSizeThereIsNoFraction) {
    start();
    network.progress(100, -1);
    network.progress(100, 0);
    EXPECT_TRUE(fractions.empty());
    network.finish();
}

TEST_F(UpdateDownloaderTest, AnOldFileIsReplacedWhenTheNewOneHasArrived) {
    write("old");
    start();
    EXPECT_EQ(contents(), "old");
    network.finish("new");
    EXPECT_EQ(contents(), "new");
}

TEST_F(UpdateDownloaderTest, AFailureIsThrownAndLeavesTheOldFile) {
    write("old");
    start();
    network.fail(u"no network"_s);
    EXPECT_EQ(error, u"no network"_s);
    EXPECT_EQ(contents(), "old");
}

TEST_F(UpdateDownloaderTest, AFileThatCannotBeMovedIsAFailureAndIsRemoved) {
    ASSERT_TRUE(QDir().mkpath(destination + u"/in the way"_s));
    start();
    network.finish();
    EXPECT_EQ(result, std::nullopt);
    ASSERT_TRUE(error);
    EXPECT_NE(*error, u""_s);
    EXPECT_EQ(files(), QStringList{u"Quorvin-update.tar.gz"_s});
}
