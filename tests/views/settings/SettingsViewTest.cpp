#include "SettingsViewTest.h"

#include <algorithm>

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

void SettingsViewTest::open(Tab tab, QSize size) {
    start();
    scheduler.runPosted(); // the answers to what is asked at start
    showSection(tab, size);
}

void SettingsViewTest::showSection(Tab tab, QSize size) {
    show(u"SettingsWindow { width: %1; height: %2 }"_s.arg(size.width()).arg(size.height()),
         appState());
    selectSection(tab);
}

void SettingsViewTest::selectSection(Tab tab) {
    clickAt(middleOf(items(u"sidebarItem"_s).at(static_cast<int>(tab))));
    leave();
    advance(300ms);
    (void)grab();
}

QQuickItem* SettingsViewTest::row(const QString& label) {
    for (QQuickItem* text : items(u"rowLabel"_s)) {
        if (text->property("text") == label) {
            return text->parentItem()->parentItem();
        }
    }
    ADD_FAILURE() << "no row " << label.toStdString();
    return nullptr;
}

QString SettingsViewTest::descriptionOf(const QString& label) {
    return itemIn(row(label), u"rowDescription"_s)->property("text").toString();
}

QStringList SettingsViewTest::cards() {
    QStringList found;
    for (QQuickItem* caption : items(u"cardCaption"_s)) {
        QStringList labels;
        for (QQuickItem* label : itemsIn(caption->parentItem(), u"rowLabel"_s)) {
            labels.append(label->property("text").toString());
        }
        found.append(caption->property("text").toString() + u": "_s + labels.join(u", "_s));
    }
    return found;
}

void SettingsViewTest::expectDividedRows() {
    for (QQuickItem* ground : items(u"cardGround"_s)) {
        const auto dividers = itemsIn(ground, u"rowDivider"_s);
        if (!itemsIn(ground, u"infoText"_s).isEmpty()) {
            continue; // remarks are told apart by their symbols
        }
        for (QQuickItem* divider : dividers) {
            const bool isLast = divider == dividers.last();
            EXPECT_EQ(divider->isVisible(), !isLast)
                << divider->parentItem()->property("label").toString().toStdString();
            expectColor(divider->property("color").value<QColor>(), withAlpha(Qt::white, 0.06));
            EXPECT_EQ(divider->x(), 16);
            EXPECT_EQ(divider->width(), ground->width() - 16);
            EXPECT_EQ(divider->height(), 1);
        }
    }
}

void SettingsViewTest::clickOn(QQuickItem* item) {
    ASSERT_NE(item, nullptr);
    QMetaObject::invokeMethod(this->item(u"sectionPage"_s), "show", Q_ARG(QQuickItem*, item));
    clickAt(middleOf(item));
}

void SettingsViewTest::choose(QQuickItem* picker, const QString& text) {
    clickOn(picker);
    (void)grab(); // makes the entries
    advance(300ms);
    (void)grab();
    for (QQuickItem* entry : items(u"pickerEntry"_s)) {
        if (entry->isVisible() && entry->property("text") == text) {
            clickAt(middleOf(entry));
            advance(300ms);
            return;
        }
    }
    ADD_FAILURE() << "no entry " << text.toStdString();
}

QStringList SettingsViewTest::entriesOf(QQuickItem* picker) {
    clickOn(picker);
    (void)grab(); // makes the entries
    advance(300ms);
    (void)grab();
    auto entries = items(u"pickerEntry"_s);
    std::sort(entries.begin(), entries.end(),
              [](const QQuickItem* one, const QQuickItem* other) { return one->y() < other->y(); });
    QStringList texts;
    for (const QQuickItem* entry : entries) {
        if (entry->isVisible()) {
            texts.append(entry->property("text").toString());
        }
    }
    key(Qt::Key_Escape);
    advance(300ms);
    return texts;
}

void SettingsViewTest::press(QQuickItem* control, Qt::Key key, int times) {
    ASSERT_NE(control, nullptr);
    control->forceActiveFocus(Qt::TabFocusReason);
    for (int i = 0; i < times; ++i) {
        this->key(key);
    }
}

} // namespace quorvin::testing
