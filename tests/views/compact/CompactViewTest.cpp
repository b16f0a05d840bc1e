#include "CompactViewTest.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

void CompactViewTest::showView() {
    start();
    scheduler.runPosted(); // the model's load
    show(u"CompactView {}"_s, appState());
    window().setColor(QColor::fromRgbF(0.09F, 0.09F, 0.09F));
}

void CompactViewTest::attach(int count) {
    QList<QUrl> images;
    for (int i = 0; i < count; ++i) {
        images.append(QUrl::fromLocalFile(u"/pictures/screen %1.png"_s.arg(i)));
    }
    app().attachImages(images);
}

void CompactViewTest::transcribe() {
    holdEngine();
    speak();
    app().stopRecording();
    scheduler.runPosted();
}

} // namespace quorvin::testing
