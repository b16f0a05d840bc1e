#include "platform/qt/QtHttpClient.h"
#include "support/Eventually.h"
#include "unit/platform/qt/HttpServer.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class HttpClientTest : public ::testing::Test {
protected:
    void start(const QUrl& url, std::chrono::milliseconds timeout = 20s) { fetch(url, timeout); }
    std::optional<QByteArray> result(const QUrl& url, std::chrono::milliseconds timeout = 20s) {
        start(url, timeout);
        EXPECT_TRUE(eventually([this] { return hasEnded; }));
        return body;
    }

    HttpServer server;
    std::unique_ptr<QtHttpClient> client =
        std::make_unique<QtHttpClient>(QtHttpClient::Protocols::alsoPlainHttp);
    bool hasEnded = false;
    std::optional<QByteArray> body;

private:
    Task<> fetch(QUrl url, std::chrono::milliseconds timeout) {
        const std::optional<QByteArray> answer =
            co_await client->get(url, "application/json", timeout);
        body = answer;
        hasEnded = true;
    }
};

} // namespace

TEST_F(HttpClientTest, FetchesTheBodyWithTheHeaderAskedForAndPastCaches) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}";
    EXPECT_EQ(result(server.url()), "{}");
    EXPECT_TRUE(server.request.startsWith("GET /builds/latest.json?ts=1 HTTP/1.1\r\n"));
    EXPECT_TRUE(server.request.contains("\r\nAccept: application/json\r\n"));
    EXPECT_TRUE(server.request.toLower().contains("\r\ncache-control: no-cache\r\n"));
}

TEST_F(HttpClientTest, TheBodyOfAnErrorPageIsAnAnswerToo) {
    server.answer = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone";
    EXPECT_EQ(result(server.url()), "gone");
}

TEST_F(HttpClientTest, NobodyThereIsNoAnswer) {
    const QUrl url = server.url();
    server.close();
    EXPECT_EQ(result(url), std::nullopt);
}

TEST_F(HttpClientTest, SomethingElseThanHttpIsNoAnswer) {
    server.answer = "220 mail.example ESMTP\r\n";
    EXPECT_EQ(result(server.url()), std::nullopt);
}

TEST_F(HttpClientTest, HalfABodyIsNoAnswer) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\n{\"version\"";
    EXPECT_EQ(result(server.url()), std::nullopt);
}

TEST_F(HttpClientTest, ALongBodyThatBreaksOffIsNoAnswer) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 901000\r\n\r\n" + QByteArray(900'000, ' ');
    EXPECT_EQ(result(server.url()), std::nullopt);
}

TEST_F(HttpClientTest, ASilentServerIsGivenUpAfterTheTimeout) {
    server.holdsTheLine = true;
    EXPECT_EQ(result(server.url(), 50ms), std::nullopt);
}

TEST_F(HttpClientTest, AFloodIsCutOff) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 9000000\r\n\r\n" + QByteArray(9000000, ' ');
    EXPECT_EQ(result(server.url()), std::nullopt);
}

TEST_F(HttpClientTest, PlainHttpIsRefusedUnlessAllowed) {
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}";
    client = std::make_unique<QtHttpClient>(QtHttpClient::Protocols::onlyHttps);
    EXPECT_EQ(result(server.url()), std::nullopt);
    EXPECT_TRUE(server.request.isEmpty());
}

TEST_F(HttpClientTest, OtherSchemesAreRefused) {
    EXPECT_EQ(result(QUrl(u"file:///etc/hostname"_s)), std::nullopt);
}

TEST_F(HttpClientTest, WhatStillWaitsAtTheEndHasNoAnswer) {
    server.holdsTheLine = true;
    start(server.url());
    client.reset();
    EXPECT_TRUE(hasEnded);
    EXPECT_EQ(body, std::nullopt);
}
