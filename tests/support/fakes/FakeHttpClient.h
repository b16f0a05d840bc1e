#pragma once

#include "platform/HttpClient.h"

#include <deque>
#include <vector>

namespace quorvin::testing {

/// A network whose answers the test gives, one a request, in the order of the requests.
class FakeHttpClient final : public HttpClient {
public:
    struct Request {
        QUrl url;
        QByteArray accept;
        std::chrono::milliseconds timeout;
    };

    ~FakeHttpClient() override {
        for (std::size_t number = 0; number < m_answers.size(); ++number) {
            answer(number, std::nullopt);
        }
    }

    [[nodiscard]] Task<std::optional<QByteArray>> get(QUrl url, QByteArray accept,
                                                      std::chrono::milliseconds timeout) override {
        requests.push_back({url, accept, timeout});
        const auto pending = *m_answers.emplace_back(std::in_place);
        const std::optional<QByteArray> body = co_await pending;
        co_return body;
    }

    /// Answers the request of that number, once; without a body, as a network that isn't there.
    void answer(std::size_t number, const std::optional<QByteArray>& body) {
        if (auto waiting = std::exchange(m_answers.at(number), std::nullopt)) {
            waiting->resolve(body);
        }
    }

    std::vector<Request> requests;

private:
    std::deque<std::optional<Pending<std::optional<QByteArray>>>> m_answers;
};

} // namespace quorvin::testing
