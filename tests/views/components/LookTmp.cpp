#include "views/support/ViewTest.h"
using namespace quorvin::testing; using namespace std::chrono_literals; using namespace Qt::Literals::StringLiterals;
using TmpLook = ViewTest;
TEST_F(TmpLook, Shot) {
  for (auto name : {u"razer"_s, u"latte"_s, u"synthwave"_s}) {
    theme.setTheme(name);
    show(u"Rectangle { width: 300; height: 90; color: ThemeManager.current.bgSurface; Row { x:10; y: 12; spacing: 12; GlassIconButton { objectName:'a'; systemName: 'list.bullet.rectangle' } GlassIconButton { systemName: 'line.3.horizontal' } GlassIconButton { systemName: 'slider.horizontal.3' } GlassIconButton { systemName: 'paperclip' }  }"
     "Row { x: 10; y: 55; spacing: 20; DigitText { text: '11:11'; color: ThemeManager.current.textPrimary; font: Typeface.font(20, Font.Medium) } DigitText { text: '08:49'; color: ThemeManager.current.textPrimary; font: Typeface.font(20, Font.Medium) } Text { text: '11:11'; color: ThemeManager.current.textMuted; font: Typeface.font(20, Font.Medium) } } }"_s);
    hover(u"a"_s); key(Qt::Key_Tab); key(Qt::Key_Tab); advance(1s);
    grab().save(u"/tmp/w/glass-%1-%2.png"_s.arg(name).arg(window().effectiveDevicePixelRatio()));
  }
  start(); theme.setTheme(u"glacier"_s); show(u"MainWindow {}"_s, appState()); advance(1s); grab().save(u"/tmp/w/main-glacier.png"_s);
  close(); theme.setTheme(u"mocha"_s); show(u"SettingsWindow { visible: true; width: 780; height: 560 }"_s, appState()); advance(1s); grab().save(u"/tmp/w/settings-mocha.png"_s);
}
