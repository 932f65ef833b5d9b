#pragma once

#include <QHeaderView>
#include <QSet>

namespace kalvo {

/** Column heads of the archive grid. Some end in an arrow, shown under the pointer, that opens a list of values. */
class ArchiveHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit ArchiveHeader(QWidget* parent = nullptr);

    /** Logical sections that have the arrow. */
    void SetListSections(const QSet<int>& sections) { listSections_ = sections; }
    bool HasList(int section) const { return listSections_.contains(section); }
    /** Place of a section's arrow in the viewport; empty when the section has none or is hidden. */
    QRect ArrowRect(int section) const;

Q_SIGNALS:
    void ValueListRequested(int section);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /** The section whose arrow is there, -1 for none. */
    int ArrowAt(const QPoint& place) const;
    void Hover(int section);

    QSet<int> listSections_;
    int hovered_ = -1;
    int pressed_ = -1;
};

} // namespace kalvo
