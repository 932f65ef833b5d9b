#include "playlists/ui/ChartsPrint.h"

#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

constexpr double rowPoints = 15;
constexpr double fontPoints = 9;
constexpr double gapPoints = 9;
/** Shares of the columns, in the order of the headers. */
constexpr std::array<double, 8> shares{0.06, 0.19, 0.26, 0.08, 0.08, 0.07, 0.08, 0.18};
/** Page header, column headers, and the footer with an empty row above. */
constexpr int otherRows = 5;

double Scale(const QPrinter& printer) {
    return printer.resolution() / 72.0;
}

QRectF PageRect(const QPrinter& printer) {
    return {QPointF(), printer.pageRect(QPrinter::DevicePixel).size()};
}

int RowsPerPage(const QPrinter& printer) {
    const int rows = static_cast<int>(PageRect(printer).height() / (rowPoints * Scale(printer)));
    return std::max(1, rows - otherRows);
}

/** One page on its way: rows go down from its top. */
class Page {
public:
    Page(QPainter& painter, const QPrinter& printer)
        : painter_(painter),
          rect_(PageRect(printer)),
          row_(rowPoints * Scale(printer)),
          gap_(gapPoints * Scale(printer)) {}

    void Header(const QString& text) {
        Style(true);
        painter_.drawText(Line(0), Qt::AlignCenter, text);
        top_ = 2 * row_;
    }
    void Row(const QStringList& texts, bool isBold) {
        Style(isBold);
        double left = rect_.left();
        for (std::size_t column = 0; column < shares.size(); ++column) {
            const QRectF cell(left, top_, rect_.width() * shares.at(column), row_);
            const int place = static_cast<int>(column);
            const bool isFigure = place == 0 || (place >= 3 && place <= 6);
            const QRectF room = cell.adjusted(0, 0, -gap_, 0);
            const QString text = painter_.fontMetrics().elidedText(texts.value(place).simplified(), Qt::ElideRight,
                                                                   static_cast<int>(room.width()));
            painter_.drawText(room, Qt::AlignVCenter | (isFigure ? Qt::AlignRight : Qt::AlignLeft), text);
            left += cell.width();
        }
        top_ += row_;
        if (isBold)
            painter_.drawLine(QPointF(rect_.left(), top_), QPointF(rect_.right(), top_));
    }
    void Footer(const QString& text) {
        Style(false);
        painter_.drawText(Line(rect_.height() - row_), Qt::AlignCenter, text);
    }

private:
    void Style(bool isBold) {
        QFont font = painter_.font();
        font.setPointSizeF(fontPoints);
        font.setBold(isBold);
        painter_.setFont(font);
    }
    QRectF Line(double top) const { return {rect_.left(), top, rect_.width(), row_}; }

    QPainter& painter_;
    QRectF rect_;
    double row_;
    double gap_;
    double top_ = 0;
};

} // namespace

int ChartsPrint::PageCount(const QPrinter& printer) const {
    const int perPage = RowsPerPage(printer);
    return std::max(1, (static_cast<int>(ranking_.Shown()) + perPage - 1) / perPage);
}

bool ChartsPrint::Print(QPrinter& printer) const {
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const int pages = PageCount(printer);
    const int perPage = RowsPerPage(printer);
    for (int number = 1; number <= pages; ++number) {
        if (number > 1 && !printer.newPage())
            return false;
        Page page(painter, printer);
        page.Header(QStringLiteral(" - Kalvo Charts vom ") + date_.toString(QStringLiteral("dd.MM.yyyy")));
        page.Row(ChartsRanking::Headers(), true);
        const qsizetype end = std::min<qsizetype>(ranking_.Shown(), static_cast<qsizetype>(number) * perPage);
        for (qsizetype place = static_cast<qsizetype>(number - 1) * perPage; place < end; ++place)
            page.Row(ranking_.Row(place), false);
        page.Footer(QStringLiteral("Seite ") + QString::number(number));
    }
    return painter.end();
}

} // namespace kalvo
