#include "support/XServer.h"

#include "support/BoundProcess.h"

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 10'000; // milliseconds

} // namespace

XServer::XServer(const QStringList& extraArguments) {
    // Writes the number of the display that it found free when it is ready.
    m_process.setStandardErrorFile(QProcess::nullDevice());
    startBound(m_process, QStringList{u"Xvfb"_s, u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s,
                                      u"1024x768x24"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s} +
                              extraArguments);
    QByteArray number;
    while (!number.endsWith('\n') && m_process.waitForReadyRead(patience)) {
        number += m_process.readAllStandardOutput();
    }
    if (number.endsWith('\n')) {
        m_display = ':' + number.trimmed();
    }
}

void XServer::stop() {
    m_process.kill();
    m_process.waitForFinished(patience);
}

} // namespace quorvin::testing
