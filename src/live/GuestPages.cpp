#include "live/GuestPages.h"

#include "live/GuestText.h"

#include <QFile>

#include <algorithm>

static void InitGuestFiles() {
    Q_INIT_RESOURCE(guest); // the macro has to be called outside of a namespace
}

namespace kalvo {

namespace {

using GuestText::Escaped;

QByteArray ReadFile(const char* name) {
    QFile file(QStringLiteral(":/kalvo/guest/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray Filled(QByteArray word, const QByteArray& first, const QByteArray& second = {}) {
    const auto at = word.indexOf("%2");
    if (at >= 0)
        word.replace(at, 2, second);
    return word.replace(word.indexOf("%1"), 2, first);
}

QString TitleOf(const QString& title, GuestLanguage language) {
    return title.isEmpty() ? QString::fromUtf8(GuestWords::Of(language, "unbenannt")) : title;
}

/** Title above artist. */
QByteArray Names(const QString& title, const QString& further, GuestLanguage language) {
    QByteArray html = "<span class=\"namen\"><span class=\"titel\">" + Escaped(TitleOf(title, language)) + "</span>";
    if (!further.isEmpty())
        html += "<span class=\"interpret\">" + Escaped(further) + "</span>";
    return html + "</span>";
}

QByteArray PlaceText(const WishPlace& place, GuestLanguage language) {
    switch (place.stage) {
    case WishStage::Waits:
        return Filled(GuestWords::Of(language, "waits"), QByteArray::number(place.place));
    case WishStage::Queued:
        return GuestWords::Of(language, "queued");
    case WishStage::OnAir:
        return GuestWords::Of(language, "onair");
    case WishStage::Played:
        return GuestWords::Of(language, "played");
    case WishStage::Gone:
        return GuestWords::Of(language, "gone");
    case WishStage::Noted:
        break;
    }
    return GuestWords::Of(language, "noted");
}

QByteArray WishLine(const GuestWish& wish, const WishPlace& place, GuestLanguage language) {
    const bool over = place.stage == WishStage::Played || place.stage == WishStage::Gone;
    const char* kind = place.stage == WishStage::OnAir ? " class=\"jetzt\"" : over ? " class=\"vorbei\"" : "";
    return QByteArray("<li") + kind + '>' + Names(wish.title, wish.artist, language) + "<span class=\"platz\">" +
           PlaceText(place, language) + "</span></li>";
}

bool IsOpen(const GuestView& view, qint64 nr) {
    return std::any_of(view.wishes.begin(), view.wishes.end(), [&view, nr](const GuestWish& wish) {
        const WishStage stage = view.board->PlaceOf(wish.ticket).stage;
        return wish.nr == nr && stage != WishStage::Played && stage != WishStage::Gone;
    });
}

QByteArray TitleLine(const GuestTitle& title, const GuestView& view) {
    QString further = title.artist;
    if (!title.duration.isEmpty())
        further += (further.isEmpty() ? QString() : QStringLiteral(" · ")) + title.duration;
    QByteArray html = "<li>" + Names(title.title, further, view.language);
    if (IsOpen(view, title.nr))
        return html + "<span class=\"schon\">" + GuestWords::Of(view.language, "gewuenscht") + "</span></li>";
    const QByteArray spoken =
        Filled(GuestWords::Of(view.language, "titelwunsch"), Escaped(TitleOf(title.title, view.language)));
    return html + "<button name=\"titel\" value=\"" + QByteArray::number(title.nr) + "\" aria-label=\"" + spoken +
           "\">" + GuestWords::Of(view.language, "wuenschen") + "</button></li>";
}

/** How much was found, or why there is nothing to see. */
QByteArray FoundLine(const GuestView& view) {
    const std::size_t count = view.found.count;
    const auto word = [&view](std::string_view key) { return GuestWords::Of(view.language, key); };
    if (view.loading)
        return word("laden");
    if (view.text.isEmpty())
        return word("anfang");
    if (count == 0)
        return word("kein");
    if (count > view.found.titles.size())
        return Filled(word("viele"), QByteArray::number(static_cast<qulonglong>(view.found.titles.size())),
                      QByteArray::number(static_cast<qulonglong>(count)));
    return count == 1 ? word("anzahl1") : Filled(word("anzahl"), QByteArray::number(static_cast<qulonglong>(count)));
}

/** The text behind "{{" and before "}}" of the page's file. */
QByteArray ValueOf(const QByteArray& key, const GuestView& view) {
    if (key == "titles")
        return GuestPages::Titles(view);
    if (key == "state")
        return GuestPages::State(view);
    if (key == "message")
        return GuestPages::Message(view);
    if (key == "text")
        return Escaped(view.text);
    if (key == "name")
        return Escaped(view.name);
    if (key == "token")
        return view.token;
    if (key == "language")
        return GuestWords::Code(view.language);
    if (key == "otherLanguage")
        return GuestWords::Code(view.language == GuestLanguage::German ? GuestLanguage::English
                                                                       : GuestLanguage::German);
    return GuestWords::Of(view.language, key.toStdString());
}

} // namespace

GuestPages::GuestPages() {
    InitGuestFiles();
    page_ = ReadFile("gast.html");
    style_ = ReadFile("gast.css");
    script_ = ReadFile("gast.js");
    sign_ = ReadFile("gast.svg");
}

QByteArray GuestPages::Page(const GuestView& view) const {
    QByteArray html;
    qsizetype from = 0;
    for (qsizetype open = page_.indexOf("{{"); open >= 0; open = page_.indexOf("{{", from)) {
        const qsizetype close = page_.indexOf("}}", open);
        html += page_.mid(from, open - from) + ValueOf(page_.mid(open + 2, close - open - 2), view);
        from = close + 2;
    }
    return html + page_.mid(from);
}

QByteArray GuestPages::Titles(const GuestView& view) {
    QByteArray html = "<p class=\"hinweis\" role=\"status\">" + FoundLine(view) + "</p>";
    if (view.found.titles.empty())
        return html;
    html += "<ul>";
    for (const GuestTitle& title : view.found.titles)
        html += TitleLine(title, view);
    return html + "</ul>";
}

QByteArray GuestPages::State(const GuestView& view) {
    const auto word = [&view](std::string_view key) { return GuestWords::Of(view.language, key); };
    const GuestBoard& board = *view.board;
    QByteArray html = "<section class=\"laeuft\"><h2>" + word("laeuft") + "</h2>";
    html += board.playing ? Names(board.title, board.artist, view.language)
                          : "<p class=\"hinweis\">" + word("still") + "</p>";
    html += "</section>";
    if (view.wishes.empty())
        return html; // the room is the search's
    html += "<section class=\"meine\"><h2>" + word("meine") + "</h2>";
    html += "<ul>";
    for (auto wish = view.wishes.rbegin(); wish != view.wishes.rend(); ++wish)
        html += WishLine(*wish, board.PlaceOf(wish->ticket), view.language);
    return html + "</ul></section>";
}

QByteArray GuestPages::Message(const GuestView& view) {
    const QByteArray word = GuestWords::Of(view.language, view.message);
    if (word.isEmpty())
        return {};
    return "<p class=\"" + QByteArray(view.message == "notiert" ? "gut" : "schlecht") + "\">" + word + "</p>";
}

} // namespace kalvo
