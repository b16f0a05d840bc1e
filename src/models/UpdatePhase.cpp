#include "models/UpdatePhase.h"

#include <array>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

QString UpdatePhase::kind() const {
    const std::array names{u"idle"_s, u"downloading"_s, u"installing"_s, u"failed"_s};
    static_assert(std::variant_size_v<decltype(value)> == names.size());
    return names.at(value.index());
}

double UpdatePhase::fraction() const {
    const auto* downloading = std::get_if<Downloading>(&value);
    return downloading ? downloading->fraction : 0;
}

QString UpdatePhase::message() const {
    const auto* failed = std::get_if<Failed>(&value);
    return failed ? failed->message : QString();
}

bool UpdatePhase::isBusy() const {
    return std::holds_alternative<Downloading>(value) || std::holds_alternative<Installing>(value);
}

} // namespace quorvin
