#include "views/support/ScreenshotProgram.h"

#include "views/support/ViewApplication.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

ScreenshotProgram::ScreenshotProgram(int& argc, char** argv)
    : m_application(makeViewApplication(argc, argv))
    , m_directory(QApplication::arguments().value(1)) {}

QStringList ScreenshotProgram::themes(const QStringList& usual) const {
    const QStringList wanted = QApplication::arguments().mid(2);
    return wanted.isEmpty() ? usual : wanted;
}

void ScreenshotProgram::save(const QString& name, const QImage& picture) const {
    const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s);
    const QString path = m_directory.filePath(u"%1@%2x.png"_s.arg(name, scale));
    if (!picture.save(path)) {
        qFatal("%ls can't be written", qUtf16Printable(path));
    }
}

} // namespace quorvin::testing
