#include "support/Text.h"

#include <QStringDecoder>
#include <QTextBoundaryFinder>

#include <utility>

namespace quorvin::text {

namespace {

bool isLineBreak(QChar c) {
    return (c >= QChar(0x0A) && c <= QChar(0x0D)) || c == QChar(0x85) || c == QChar(0x2028) ||
           c == QChar(0x2029);
}

bool isBlank(QChar c) {
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

template <typename Predicate>
QString trimmedBy(const QString& text, Predicate drop) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && drop(text[begin])) {
        ++begin;
    }
    while (end > begin && drop(text[end - 1])) {
        --end;
    }
    return text.mid(begin, end - begin);
}

} // namespace

qsizetype characterCount(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1) {
        ++count;
    }
    return count;
}

QString prefix(const QString& text, qsizetype count) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype i = 0; i < count; ++i) {
        if (finder.toNextBoundary() == -1) {
            return text;
        }
    }
    return text.left(finder.position());
}

QStringList characters(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    QStringList result;
    qsizetype begin = 0;
    for (qsizetype end = finder.toNextBoundary(); end != -1; end = finder.toNextBoundary()) {
        result.append(text.mid(begin, end - begin));
        begin = end;
    }
    return result;
}

QString trimmed(const QString& text) {
    return trimmedBy(text, [](QChar c) { return isBlank(c) || isLineBreak(c); });
}

QString trimmedOfBlanks(const QString& text) {
    return trimmedBy(text, isBlank);
}

QStringList lines(const QString& text) {
    QStringList result;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isLineBreak(text[i])) {
            result.append(text.mid(begin, i - begin));
            begin = i + 1;
        }
    }
    result.append(text.mid(begin));
    return result;
}

QString elided(const QString& text, qsizetype limit) {
    const QString head = prefix(text, limit);
    return head.size() == text.size() ? text : head + QStringLiteral("...");
}

std::optional<QString> fromUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

} // namespace quorvin::text
