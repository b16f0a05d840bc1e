#include "views/ViewSetup.h"

#include "theme/GeistFont.h"

#include <QApplication>
#include <QQuickStyle>
#include <QQuickWindow>

using namespace Qt::Literals::StringLiterals;

/// From the source that the build makes of the module.
void qml_register_types_Quorvin(); // NOLINT: its name

namespace quorvin {

void setUpViews() {
    // All that moves is drawn by our own items, into images. A graphics library would only show
    // them, for 100 MiB and a thread for each window; and the one that draws without a graphics
    // card crashes when a window closes while another one draws.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickStyle::setStyle(u"Basic"_s);
    QApplication::setFont(GeistFont::font(13));
    // The linker would leave this out of a program that names none of the types.
    qml_register_types_Quorvin();
}

} // namespace quorvin
