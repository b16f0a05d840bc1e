#pragma once

#include <QByteArray>
#include <QList>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace quorvin::testing {

/// What libFuzzer hands out, as one array of bytes.
inline QByteArray bytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

/// An input of several parts, divided by lines of "%%". Missing ones are empty.
class Parts {
public:
    Parts(const std::uint8_t* data, std::size_t size) {
        const QByteArray all = bytes(data, size);
        qsizetype begin = 0;
        for (qsizetype end = all.indexOf(divider); end >= 0; end = all.indexOf(divider, begin)) {
            m_parts.append(all.mid(begin, end - begin));
            begin = end + divider.size();
        }
        m_parts.append(all.mid(begin));
    }

    [[nodiscard]] QByteArray operator[](qsizetype index) const { return m_parts.value(index); }
    [[nodiscard]] qsizetype size() const { return m_parts.size(); }

private:
    static inline const QByteArray divider = QByteArrayLiteral("\n%%\n");
    QList<QByteArray> m_parts;
};

/// A property that holds for every input; one that doesn't is a finding, as a crash is.
inline void require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "Violated: %s\n", property);
        std::abort();
    }
}

} // namespace quorvin::testing
