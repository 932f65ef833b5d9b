#pragma once

#include "archive/CategoryLists.h"
#include "widgets/RingRoom.h"

#include <QHash>

#include <array>

class QBoxLayout;
class QButtonGroup;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

namespace kalvo {

class ValueView;

/**
 * The automatic DJ's criterion and which of its values are chosen. Each category file is read when its criterion is
 * shown first; every criterion keeps its own choice.
 */
class ValueChoice : public RingRoom {
    Q_OBJECT

public:
    /** folder: of the category files. Shows nothing before SetChoice(). */
    explicit ValueChoice(const DataFolder& folder, QWidget* parent = nullptr);

    ArchiveField Field() const { return field_; }
    /** The chosen values of the shown criterion. */
    QStringList Values() const { return chosen_.value(field_); }
    void SetChoice(ArchiveField field, const QStringList& values);
    void FocusSearch();
    /** The category files have been written anew. */
    void Reload();

Q_SIGNALS:
    void Changed();
    /** The category files are missing, or wanted anew. */
    void ListsWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr std::size_t kFieldCount = CategoryLists::kFields.size();

    QBoxLayout* BuildCriteria();
    QBoxLayout* BuildLists();
    QBoxLayout* BuildOffer();
    QBoxLayout* BuildMoving();
    QBoxLayout* BuildChosen();
    QPushButton* AddMoving(QBoxLayout& column, int number, const QString& sign, const QString& what,
                           void (ValueChoice::*act)());
    void ShowCriterion(ArchiveField field);
    void ShowOffer();
    void ShowChosen();
    void ShowChoices();
    void Choose(const QStringList& values);
    void GiveBack(const QStringList& values);
    void ChooseSelected();
    void ChooseShown();
    void GiveBackSelected();
    void GiveBackAll();
    /** Enter in the search: the selected values, or the first, are chosen. */
    void ChooseFound();

    DataFolder folder_;
    ArchiveField field_ = ArchiveField::Interpret;
    std::array<QStringListModel*, kFieldCount> lists_; ///< `LstInterpret` to `LstKommentar`: all values of a criterion
    std::array<bool, kFieldCount> isRead_{};
    QHash<ArchiveField, QStringList> chosen_;
    QButtonGroup* criteria_;
    QLabel* criterion_; ///< `lblKriterium1`
    QLabel* offerCount_;
    QLabel* chosenCount_;
    QLineEdit* search_;
    ValueView* offer_;                     ///< `List1`
    ValueView* choice_;                    ///< `LstAuswahl1`
    std::array<QPushButton*, 4> moving_{}; ///< `Command3` to `Command6`
};

} // namespace kalvo
