#include "platform/qt/QtHttpClient.h"
#include "support/Eventually.h"
#include "support/SmallDisk.h"
#include "unit/platform/qt/HttpServer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class HttpDownload : public ::testing::Test {
protected:
    void start(const QUrl& url, std::chrono::milliseconds timeout = 20s) { download(url, timeout); }
    void run(const QUrl& url, std::chrono::milliseconds timeout = 20s) {
        start(url, timeout);
        EXPECT_TRUE(eventually([this] { return hasEnded(); }));
    }
    [[nodiscard]] bool hasEnded() const { return path || error; }

    [[nodiscard]] QByteArray contents() const {
        QFile file(path.value());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir directory;
    QString place = directory.path();
    HttpServer server;
    std::unique_ptr<QtHttpClient> client =
        std::make_unique<QtHttpClient>(QtHttpClient::Protocols::alsoPlainHttp);
    std::optional<QString> path;
    std::optional<QString> error;
    using Progress = std::vector<std::pair<qint64, qint64>>;
    Progress progress;

private:
    Task<> download(QUrl url, std::chrono::milliseconds timeout) {
        try {
            const QString answer = co_await client->download(
                url, place, timeout, [this](qint64 written, qint64 expected) {
                    progress.emplace_back(written, expected);
                });
            path = answer;
        } catch (const DownloadError& failure) {
            error = QString::fromUtf8(failure.what());
        }
    }
};

} // namespace

TEST_F(HttpDownload, StoresTheBodyInAFreshFileOfTheUsersOwn) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nbuild";
    run(server.url());
    ASSERT_TRUE(path) << error.value_or(u""_s).toStdString();
    EXPECT_EQ(contents(), "build");
    EXPECT_EQ(QFileInfo(*path).path(), directory.path());
    EXPECT_EQ(QFile::permissions(*path),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
    EXPECT_TRUE(server.request.toLower().contains("\r\ncache-control: no-cache\r\n"));
}

TEST_F(HttpDownload, TellsHowFarItIs) {
    server.holdsTheLine = true;
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nfour";
    start(server.url());
    EXPECT_TRUE(eventually([this] { return !progress.empty(); }));
    EXPECT_EQ(progress, (Progress{{4, 10}}));
    server.goOn("andsix");
    EXPECT_TRUE(eventually([this] { return hasEnded(); }));
    EXPECT_EQ(contents(), "fourandsix");
    EXPECT_EQ(progress, (Progress{{4, 10}, {10, 10}}));
}

TEST_F(HttpDownload, HoldsAsMuchAsTheServerSends) {
    QByteArray body;
    for (int i = 0; body.size() < 3'000'000; ++i) {
        body += QByteArray::number(i);
    }
    server.answer =
        "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    run(server.url());
    EXPECT_TRUE(contents() == body);
}

TEST_F(HttpDownload, WhenTheServerTellsNoSizeItIsNotKnown) {
    server.answer = "HTTP/1.1 200 OK\r\n\r\nbuild";
    run(server.url());
    EXPECT_EQ(contents(), "build");
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.back(), (std::pair<qint64, qint64>{5, -1}));
}

TEST_F(HttpDownload, AnErrorPageIsStoredToo) {
    server.answer = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone";
    run(server.url());
    ASSERT_TRUE(path) << error.value_or(u""_s).toStdString();
    EXPECT_EQ(contents(), "gone");
}

TEST_F(HttpDownload, ABodyWithoutBytesIsAFileWithout) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";
    run(server.url());
    ASSERT_TRUE(path) << error.value_or(u""_s).toStdString();
    EXPECT_EQ(contents(), "");
    EXPECT_TRUE(QFile::exists(*path));
}

TEST_F(HttpDownload, ACompressedFileStaysCompressed) {
    // What "gzip" makes of "build", from a server that takes the file for a compressed transfer.
    const QByteArray body =
        QByteArray::fromHex("1f8b08000000000000034b2acdcc490100f8e37afc05000000");
    server.answer = "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: " +
                    QByteArray::number(body.size()) + "\r\n\r\n" + body;
    run(server.url());
    EXPECT_TRUE(server.request.contains("\r\nAccept-Encoding: identity\r\n"));
    ASSERT_TRUE(path) << error.value_or(u""_s).toStdString();
    EXPECT_EQ(contents(), body);
}

TEST_F(HttpDownload, GoesWhereTheServerSendsIt) {
    HttpServer other;
    other.answer = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nbuild";
    server.answer = "HTTP/1.1 302 Found\r\nLocation: " + other.url().toEncoded() +
                    "\r\nContent-Length: 4\r\n\r\nelse";
    run(server.url());
    ASSERT_TRUE(path) << error.value_or(u""_s).toStdString();
    EXPECT_EQ(contents(), "build");
}

TEST_F(HttpDownload, IsNotSentToAFileOfThisMachine) {
    server.answer = "HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\n\r\n";
    run(server.url());
    EXPECT_TRUE(error);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, HalfABodyIsAFailure) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\nbuil";
    run(server.url());
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, ALongBodyThatBreaksOffIsAFailure) {
    server.answer =
        "HTTP/1.1 200 OK\r\nContent-Length: 3001000\r\n\r\n" + QByteArray(3'000'000, 'x');
    run(server.url());
    EXPECT_EQ(error, u"Connection closed"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, NobodyThereIsAFailure) {
    const QUrl url = server.url();
    server.close();
    run(url);
    EXPECT_EQ(error, u"Connection refused"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, ASilentServerIsGivenUp) {
    server.holdsTheLine = true;
    run(server.url(), 50ms);
    EXPECT_EQ(error, u"The request timed out."_s);
}

TEST_F(HttpDownload, AServerThatFallsSilentIsGivenUp) {
    server.holdsTheLine = true;
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\nbuil";
    run(server.url(), 50ms);
    EXPECT_EQ(error, u"The request timed out."_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, AFullDiskIsAFailure) {
    server.answer =
        "HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n" + QByteArray(3'000'000, 'x');
    const SmallDisk disk(100'000);
    run(server.url());
    EXPECT_EQ(error, u"File too large"_s);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(HttpDownload, ADirectoryThatIsMissingIsAFailure) {
    place = directory.filePath(u"missing"_s);
    run(server.url());
    EXPECT_EQ(error, u"No such file or directory"_s);
    EXPECT_TRUE(server.request.isEmpty());
}

TEST_F(HttpDownload, PlainHttpIsRefusedUnlessAllowed) {
    client = std::make_unique<QtHttpClient>(QtHttpClient::Protocols::onlyHttps);
    run(server.url());
    EXPECT_EQ(error, u"unsupported URL"_s);
    EXPECT_TRUE(server.request.isEmpty());
}

TEST_F(HttpDownload, OtherSchemesAreRefused) {
    for (const QString& address : {u"file:///etc/hostname"_s, u"relative"_s}) {
        error.reset();
        run(QUrl(address));
        EXPECT_EQ(error, u"unsupported URL"_s);
    }
}

TEST_F(HttpDownload, WhatStillRunsAtTheEndIsAFailure) {
    server.holdsTheLine = true;
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\nbuil";
    start(server.url());
    EXPECT_TRUE(eventually([this] { return !progress.empty(); }));
    client.reset();
    EXPECT_TRUE(error);
    EXPECT_TRUE(files().isEmpty());
}
