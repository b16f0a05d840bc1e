#include "platform/linux/x11/UserGuidePages.h"

#include <QDir>
#include <QFileInfo>
#include <QStringView>

#include <algorithm>
#include <array>

namespace quorvin {

namespace {

struct Page {
    QStringView anchor; // what stands behind the question mark of the settings page
    QStringView fileName;
};

constexpr std::array pages{
    Page{u"Privacy_Microphone", u"microphone.html"},
    Page{u"Privacy_Accessibility", u"accessibility.html"},
    Page{u"Privacy_Automation", u"automation.html"},
};

} // namespace

std::optional<QUrl> userGuidePage(const QString& url, const QString& directory) {
    const bool isSettingsPage = url.startsWith(u"x-apple.systempreferences:", Qt::CaseInsensitive);
    const QString anchor = url.section(u'?', 1);
    const auto page = std::find_if(pages.begin(), pages.end(), [&anchor](const Page& candidate) {
        return candidate.anchor == anchor;
    });
    if (!isSettingsPage || page == pages.end()) {
        return std::nullopt;
    }
    const QString path = QDir(directory).absoluteFilePath(page->fileName.toString());
    return QFileInfo(path).isFile() ? std::optional(QUrl::fromLocalFile(path)) : std::nullopt;
}

} // namespace quorvin
