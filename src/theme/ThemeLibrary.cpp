#include "theme/ThemeLibrary.h"

#include "theme/HexColor.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

const std::array<ThemeColors, 8>& ThemeLibrary::allThemes() {
    static const std::array<ThemeColors, 8> themes{{
        {
            .name = u"razer"_s,
            .bgBase = hexColor(u"0a0a0a"),
            .bgSurface = hexColor(u"111111"),
            .bgOverlay = hexColor(u"1a1a1a"),
            .textPrimary = hexColor(u"ffffff"),
            .textSecondary = hexColor(u"b4b4b4"),
            .textMuted = hexColor(u"666666"),
            .accent = hexColor(u"3b82f6"),
            .success = hexColor(u"22c55e"),
            .recording = hexColor(u"ff3366"),
            .transcribing = hexColor(u"8b5cf6"),
            .border = hexColor(u"2a2a2a"),
            .claude = hexColor(u"8b5cf6"),
            .opencode = hexColor(u"10b981"),
            .warning = hexColor(u"ffcc00"),
            .error = hexColor(u"ff3366"),
        },
        {
            .name = u"mocha"_s,
            .bgBase = hexColor(u"1e1e2e"),
            .bgSurface = hexColor(u"313244"),
            .bgOverlay = hexColor(u"45475a"),
            .textPrimary = hexColor(u"cdd6f4"),
            .textSecondary = hexColor(u"a6adc8"),
            .textMuted = hexColor(u"6c7086"),
            .accent = hexColor(u"89b4fa"),
            .success = hexColor(u"a6e3a1"),
            .recording = hexColor(u"f38ba8"),
            .transcribing = hexColor(u"fab387"),
            .border = hexColor(u"45475a"),
            .claude = hexColor(u"8b5cf6"),
            .opencode = hexColor(u"10b981"),
            .warning = hexColor(u"f9e2af"),
            .error = hexColor(u"f38ba8"),
        },
        {
            .name = u"latte"_s,
            .bgBase = hexColor(u"eff1f5"),
            .bgSurface = hexColor(u"e6e9ef"),
            .bgOverlay = hexColor(u"ccd0da"),
            .textPrimary = hexColor(u"4c4f69"),
            .textSecondary = hexColor(u"5c5f77"),
            .textMuted = hexColor(u"8c8fa1"),
            .accent = hexColor(u"1e66f5"),
            .success = hexColor(u"40a02b"),
            .recording = hexColor(u"d20f39"),
            .transcribing = hexColor(u"fe640b"),
            .border = hexColor(u"ccd0da"),
            .claude = hexColor(u"8b5cf6"),
            .opencode = hexColor(u"10b981"),
            .warning = hexColor(u"df8e1d"),
            .error = hexColor(u"d20f39"),
        },
        {
            .name = u"neon"_s,
            .bgBase = hexColor(u"0a0a0f"),
            .bgSurface = hexColor(u"12121a"),
            .bgOverlay = hexColor(u"1a1a25"),
            .textPrimary = hexColor(u"ffffff"),
            .textSecondary = hexColor(u"a0a0b0"),
            .textMuted = hexColor(u"606070"),
            .accent = hexColor(u"00ffff"),
            .success = hexColor(u"00ff88"),
            .recording = hexColor(u"ff0066"),
            .transcribing = hexColor(u"ff8800"),
            .border = hexColor(u"2a2a35"),
            .claude = hexColor(u"cc00ff"),
            .opencode = hexColor(u"00ff88"),
            .warning = hexColor(u"ffcc00"),
            .error = hexColor(u"ff0066"),
        },
        {
            .name = u"nord"_s,
            .bgBase = hexColor(u"2e3440"),
            .bgSurface = hexColor(u"3b4252"),
            .bgOverlay = hexColor(u"434c5e"),
            .textPrimary = hexColor(u"eceff4"),
            .textSecondary = hexColor(u"d8dee9"),
            .textMuted = hexColor(u"4c566a"),
            .accent = hexColor(u"88c0d0"),
            .success = hexColor(u"a3be8c"),
            .recording = hexColor(u"bf616a"),
            .transcribing = hexColor(u"d08770"),
            .border = hexColor(u"4c566a"),
            .claude = hexColor(u"b48ead"),
            .opencode = hexColor(u"a3be8c"),
            .warning = hexColor(u"ebcb8b"),
            .error = hexColor(u"bf616a"),
        },
        {
            .name = u"glacier"_s,
            .bgBase = hexColor(u"eef4fb"),
            .bgSurface = hexColor(u"ddeef9"),
            .bgOverlay = hexColor(u"c8e0f0"),
            .textPrimary = hexColor(u"0d2137"),
            .textSecondary = hexColor(u"1e4060"),
            .textMuted = hexColor(u"4a7090"),
            .accent = hexColor(u"0070f3"),
            .success = hexColor(u"00b870"),
            .recording = hexColor(u"e0003a"),
            .transcribing = hexColor(u"0070f3"),
            .border = hexColor(u"aaccdd"),
            .claude = hexColor(u"7040e0"),
            .opencode = hexColor(u"00b870"),
            .warning = hexColor(u"e08800"),
            .error = hexColor(u"e0003a"),
        },
        {
            .name = u"synthwave"_s,
            .bgBase = hexColor(u"0d0015"),
            .bgSurface = hexColor(u"180028"),
            .bgOverlay = hexColor(u"220038"),
            .textPrimary = hexColor(u"f0e0ff"),
            .textSecondary = hexColor(u"d090ff"),
            .textMuted = hexColor(u"8040a0"),
            .accent = hexColor(u"ff00cc"),
            .success = hexColor(u"00ff88"),
            .recording = hexColor(u"ff0044"),
            .transcribing = hexColor(u"ff8800"),
            .border = hexColor(u"3a0060"),
            .claude = hexColor(u"cc44ff"),
            .opencode = hexColor(u"00ff88"),
            .warning = hexColor(u"ffcc00"),
            .error = hexColor(u"ff0044"),
        },
        {
            .name = u"forest"_s,
            .bgBase = hexColor(u"080f08"),
            .bgSurface = hexColor(u"0f1e0f"),
            .bgOverlay = hexColor(u"162816"),
            .textPrimary = hexColor(u"c8f0c8"),
            .textSecondary = hexColor(u"80c880"),
            .textMuted = hexColor(u"3a6a3a"),
            .accent = hexColor(u"30d870"),
            .success = hexColor(u"00ff60"),
            .recording = hexColor(u"ff3030"),
            .transcribing = hexColor(u"30ccff"),
            .border = hexColor(u"1a3a1a"),
            .claude = hexColor(u"60aaff"),
            .opencode = hexColor(u"00ff60"),
            .warning = hexColor(u"d0c030"),
            .error = hexColor(u"ff3030"),
        },
    }};
    return themes;
}

const ThemeColors& ThemeLibrary::razer() {
    return allThemes().front();
}

QColor Theme::magenta() {
    return hexColor(u"ec4899");
}

QColor Theme::cyan() {
    return hexColor(u"06b6d4");
}

} // namespace quorvin
