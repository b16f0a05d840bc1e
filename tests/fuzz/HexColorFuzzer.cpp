#include "fuzz/Fuzzing.h"
#include "theme/HexColor.h"

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::bytes;
using quorvin::testing::require;

namespace {

bool isInRange(const QColor& color) {
    const auto isByte = [](int value) { return value >= 0 && value <= 255; };
    return color.isValid() && isByte(color.red()) && isByte(color.green()) &&
           isByte(color.blue()) && isByte(color.alpha());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(bytes(data, size));
    const QColor color = hexColor(text);
    require(isInRange(color), "every text gives a colour");
    require(hexColor(u"#"_s + text + u";\n"_s) == color, "what stands around is left out");

    const QString written = color.name(QColor::HexArgb); // "#AARRGGBB"
    require(hexColor(written) == color, "a colour reads back as it was written");
    if (color.alpha() == 255) {
        require(hexColor(color.name()) == color, "and so without its opacity");
    }
    return 0;
}
