#include "models/UpdateManifest.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// Takes the leading run of digits off `text` and returns it without leading zeros.
QStringView takeNumber(QStringView& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const QStringView digits(text.begin(), end);
    text = QStringView(end, text.end());
    const auto significant =
        std::find_if(digits.begin(), digits.end(), [](QChar digit) { return digit != u'0'; });
    return {significant, digits.end()};
}

} // namespace

std::optional<UpdateManifest> UpdateManifest::decode(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) {
        return std::nullopt;
    }
    const QJsonValue version = document[u"version"_s];
    const QJsonValue dmg = document[u"dmg"_s];
    const QJsonValue notes = document[u"notes"_s];
    const auto isOptionalText = [](const QJsonValue& value) {
        return value.isString() || value.isNull() || value.isUndefined();
    };
    if (!version.isString() || !isOptionalText(dmg) || !isOptionalText(notes)) {
        return std::nullopt;
    }
    const auto text = [](const QJsonValue& value) {
        return value.isString() ? std::optional(value.toString()) : std::nullopt;
    };
    return UpdateManifest{.version = version.toString(), .dmg = text(dmg), .notes = text(notes)};
}

QString UpdateManifest::versionNumber() const {
    return version.startsWith(u'v') ? version.sliced(1) : version;
}

std::strong_ordering compareNumerically(QStringView left, QStringView right) {
    while (!left.empty() && !right.empty()) {
        std::strong_ordering order = std::strong_ordering::equal;
        if (isDigit(left.front()) && isDigit(right.front())) {
            const QStringView leftNumber = takeNumber(left);
            const QStringView rightNumber = takeNumber(right);
            order = leftNumber.size() <=> rightNumber.size();
            if (order == 0) {
                order = leftNumber.compare(rightNumber) <=> 0;
            }
        } else {
            order = left.front().unicode() <=> right.front().unicode();
            left = left.sliced(1);
            right = right.sliced(1);
        }
        if (order != 0) {
            return order;
        }
    }
    return left.size() <=> right.size();
}

} // namespace quorvin
