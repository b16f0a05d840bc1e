#include "views/dialogs/HistoryTexts.h"

#include "support/Text.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

constexpr qsizetype excerptCharacters = 50;

/// Locales have no format of just a month and a day: it is what their long one has from the one to
/// the other. A letter right behind belongs to them ("11月21日"), other signs lead on to the year.
QString monthAndDayFormat(const QLocale& locale) {
    static const QRegularExpression monthAndDay(u"(M+.*?d+|d+.*?M+)\\p{Lo}*"_s);
    const QString whole = locale.dateFormat(QLocale::LongFormat).remove(u"dddd"_s);
    return monthAndDay.match(whole).captured().replace(u"MMMM"_s, u"MMM"_s);
}

} // namespace

QString HistoryTexts::excerpt(const QString& text) {
    return text::elided(text::lines(text).join(u' '), excerptCharacters);
}

QString HistoryTexts::meta(const HistoryEntry& entry) {
    return meta(entry, QLocale::system(), QTimeZone::systemTimeZone());
}

QString HistoryTexts::meta(const HistoryEntry& entry, const QLocale& locale,
                           const QTimeZone& timeZone) {
    QStringList fields{date(entry.createdAt.toTimeZone(timeZone), locale),
                       QString::number(entry.duration, 'f', 1) + u's'};
    if (!entry.language.isEmpty()) {
        fields.append(entry.language);
    }
    return fields.join(u" | "_s);
}

QString HistoryTexts::date(const QDateTime& time, const QLocale& locale) {
    const QString comma = locale.script() == QLocale::ArabicScript ? u"، "_s : u", "_s;
    // Without a language the system's time has seconds.
    const QString clock = locale.timeFormat(QLocale::ShortFormat).remove(u":ss"_s);
    return locale.toString(time.date(), monthAndDayFormat(locale)) + comma +
           locale.toString(time.time(), clock);
}

} // namespace quorvin
