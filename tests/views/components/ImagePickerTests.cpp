#include "views/components/ImagePicker.h"
#include "views/support/ViewTest.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class ImagePickerTest : public ViewTest {
protected:
    ImagePickerTest() : picked(&picker, &ImagePicker::picked) {}

    static QFileDialog* dialog() {
        const auto widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets) {
            if (auto* found = qobject_cast<QFileDialog*>(widget); found && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }

    ImagePicker picker;
    QSignalSpy picked;
};

} // namespace

TEST_F(ImagePickerTest, GivesAllThatWasChosenAtOnce) {
    const QTemporaryDir pictures;
    QString names;
    QList<QUrl> files;
    for (const QString& name : {u"one.png"_s, u"two words.png"_s}) {
        const QString path = pictures.filePath(name);
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        names += u'"' + path + u"\" "_s;
        files.append(QUrl::fromLocalFile(path));
    }
    picker.open();
    ASSERT_TRUE(dialog());
    dialog()->findChild<QLineEdit*>()->setText(names);
    static_cast<QDialog*>(dialog())->accept();
    ASSERT_EQ(picked.size(), 1);
    EXPECT_EQ(picked.front().front().value<QList<QUrl>>(), files);
    EXPECT_FALSE(dialog());
}

TEST_F(ImagePickerTest, GivesNothingWhenTheUserThinksBetterOfIt) {
    picker.open();
    ASSERT_TRUE(dialog());
    dialog()->reject();
    EXPECT_EQ(picked.size(), 0);
    EXPECT_FALSE(dialog());
}

TEST_F(ImagePickerTest, OpensOneDialogAtATime) {
    picker.open();
    QFileDialog* const first = dialog();
    picker.open();
    EXPECT_EQ(dialog(), first);
}
