#include "platform/qt/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <initializer_list>
#include <memory>

namespace quorvin {

namespace {

template <typename Fill>
void replace(Fill fill) {
    QClipboard* const clipboard = QGuiApplication::clipboard();
    for (const auto mode : {QClipboard::Clipboard, QClipboard::Selection}) {
        if (mode == QClipboard::Clipboard || clipboard->supportsSelection()) {
            auto data = std::make_unique<QMimeData>();
            fill(*data);
            clipboard->setMimeData(data.release(), mode); // which takes it over
        }
    }
}

} // namespace

void QtPasteboard::clearContents() {
    // Nothing is offered, instead of the ownership given up: clipboard managers that see a
    // clipboard without an owner put its last content back, and might do so over the next text.
    replace([](QMimeData&) {});
}

void QtPasteboard::setString(const QString& text) {
    replace([&text](QMimeData& data) { data.setText(text); });
}

} // namespace quorvin
