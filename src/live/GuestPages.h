#pragma once

#include "live/GuestCatalog.h"
#include "live/GuestWish.h"
#include "live/GuestWords.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace kalvo {

/** What a page shows, whatever it was asked for by. */
struct GuestView {
    GuestLanguage language = GuestLanguage::German;
    QString text;                  ///< that was searched for
    GuestCatalog::Found found;     ///< for the text
    bool loading = false;          ///< the catalog is not there yet
    std::vector<GuestWish> wishes; ///< of this guest
    QString name;                  ///< of this guest
    QByteArray token;              ///< proves that a form came from our page
    std::string message;           ///< key of a word; empty: none
    std::shared_ptr<const GuestBoard> board = std::make_shared<const GuestBoard>();
};

/**
 * HTML for the guests' telephones: the whole page, which works without scripts, and the parts of it that the script
 * puts in anew. Every text from outside is escaped. Any thread.
 */
class GuestPages {
public:
    /** Reads the page's files from the program. */
    GuestPages();

    QByteArray Page(const GuestView& view) const;
    /** The titles that were found, each with its button. */
    static QByteArray Titles(const GuestView& view);
    /** What plays, and where the guest's wishes are. */
    static QByteArray State(const GuestView& view);
    /** Empty without a message. */
    static QByteArray Message(const GuestView& view);

    const QByteArray& Style() const { return style_; }
    const QByteArray& Script() const { return script_; }
    const QByteArray& Sign() const { return sign_; }

private:
    QByteArray page_;
    QByteArray style_;
    QByteArray script_;
    QByteArray sign_;
};

} // namespace kalvo
