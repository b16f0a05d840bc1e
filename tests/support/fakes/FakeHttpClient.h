#pragma once

#include "platform/HttpClient.h"

#include <QTemporaryFile>

#include <deque>
#include <stdexcept>
#include <vector>

namespace quorvin::testing {

/// A network whose answers the test gives, one a request, in the order of the requests. Downloads
/// are held until the test lets the last one go on or end.
class FakeHttpClient final : public HttpClient {
public:
    struct Request {
        QUrl url;
        QByteArray accept;
        std::chrono::milliseconds timeout;
    };
    struct Download {
        QUrl url;
        QString directory;
        std::chrono::milliseconds timeout;
    };

    ~FakeHttpClient() override {
        for (std::size_t number = 0; number < m_answers.size(); ++number) {
            answer(number, std::nullopt);
        }
        if (m_held) {
            fail(QStringLiteral("The client has gone"));
        }
    }

    [[nodiscard]] Task<std::optional<QByteArray>> get(QUrl url, QByteArray accept,
                                                      std::chrono::milliseconds timeout) override {
        requests.push_back({url, accept, timeout});
        const auto pending = *m_answers.emplace_back(std::in_place);
        const std::optional<QByteArray> body = co_await pending;
        co_return body;
    }

    [[nodiscard]] Task<QString> download(QUrl url, QString directory,
                                         std::chrono::milliseconds timeout,
                                         Progress onProgress) override {
        downloads.push_back({url, directory, timeout});
        m_held = Held{.directory = directory, .onProgress = onProgress, .end = {}};
        const auto end = m_held->end;
        const QString path = co_await end;
        co_return path;
    }

    /// Answers the request of that number, once; without a body, as a network that isn't there.
    void answer(std::size_t number, const std::optional<QByteArray>& body) {
        if (auto waiting = std::exchange(m_answers.at(number), std::nullopt)) {
            waiting->resolve(body);
        }
    }

    /// What the running download has come to, of a file of a million bytes.
    void progress(double fraction) {
        constexpr qint64 expected = 1'000'000;
        progress(static_cast<qint64>(fraction * expected), expected);
    }
    void progress(qint64 written, qint64 expected) { m_held.value().onProgress(written, expected); }

    /// Ends the running download with a file that holds this.
    void finish(const QByteArray& contents = "a build") {
        Held held = take();
        QTemporaryFile file(held.directory + QStringLiteral("/fake-download.XXXXXX"));
        file.setAutoRemove(false);
        if (!file.open() || file.write(contents) != contents.size()) {
            throw std::runtime_error("No place for the download");
        }
        file.close();
        held.end.resolve(file.fileName());
    }
    /// Ends the running download without one.
    void fail(const QString& message) {
        take().end.reject(std::make_exception_ptr(DownloadError(message)));
    }

    std::vector<Request> requests;
    std::vector<Download> downloads;

private:
    struct Held {
        QString directory;
        Progress onProgress;
        Pending<QString> end;
    };

    Held take() {
        Held held = m_held.value();
        m_held.reset();
        return held;
    }

    std::deque<std::optional<Pending<std::optional<QByteArray>>>> m_answers;
    std::optional<Held> m_held;
};

} // namespace quorvin::testing
