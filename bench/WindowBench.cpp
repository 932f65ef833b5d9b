// How long the archive's window stands still, beside the targets: 16 ms with 100,000 titles, 50 ms with a million.
// A heartbeat ticks in the event loop; while an act runs, the longest pause between two beats is how long a key press
// or a sound's display had to wait. Runs on a screen or under Xvfb: bench_window [titles ...]

#include "FilledArchive.h"
#include "archive/CategoryBuild.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/CategoryTree.h"
#include "base/Settings.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>

#include <cstdio>
#include <ctime>
#include <functional>

namespace {

using namespace kalvo;

/** Milliseconds that this thread has computed: other programs on the machine do not count. */
double Computed() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

class Heartbeat {
public:
    Heartbeat() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Beat(); });
        timer_.start(0);
        watch_.start();
        computed_ = Computed();
    }
    double LongestWall() const { return wall_; }
    double LongestComputed() const { return work_; }

private:
    void Beat() {
        wall_ = std::max(wall_, double(watch_.nsecsElapsed()) / 1e6);
        work_ = std::max(work_, Computed() - computed_);
        watch_.restart();
        computed_ = Computed();
    }

    QTimer timer_;
    QElapsedTimer watch_;
    double computed_ = 0;
    double wall_ = 0;
    double work_ = 0;
};

void Idle(int milliseconds) {
    QElapsedTimer passed;
    passed.start();
    while (passed.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
}

class Desk {
public:
    explicit Desk(int titles)
        : filled_(bench::FilledArchive::Of(titles)),
          settings_(filled_.data.Path(QStringLiteral("\\kalvo.ini"))),
          panel_(filled_.archive, settings_, filled_.data),
          target_(titles <= 100000 ? 16 : 50) {
        panel_.resize(1260, 500);
        panel_.show();
        Idle(500);
    }

    void Run() {
        std::printf("\n%lld titles, target %d ms\n%-44s %10s %10s\n", static_cast<long long>(filled_.archive.Count()),
                    target_, "longest blocked time of", "wall ms", "cpu ms");
        Typing();
        Sorting();
        Scrolling();
        Marking();
        Categories();
        Deleting();
        Writing();
    }

private:
    ArchiveGrid& Grid() { return *panel_.findChild<ArchiveGrid*>(); }
    QLineEdit& SearchBox() { return *panel_.findChild<QLineEdit*>(QStringLiteral("Text1")); }

    /** Each step of an act comes from the event loop by itself, as keys and clicks do. */
    void Measure(const char* what, const std::function<void()>& act) {
        Idle(50);
        Heartbeat heart;
        QMetaObject::invokeMethod(&panel_, act, Qt::QueuedConnection);
        Idle(150);
        const double computed = heart.LongestComputed();
        std::printf("%-44s %10.1f %10.1f%s\n", what, heart.LongestWall(), computed, computed > target_ ? "  over" : "");
        std::fflush(stdout);
    }

    static void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(&widget, &press);
    }

    void Typing() {
        for (const QString& needle : {QStringLiteral("stern"), QStringLiteral("grü"), QStringLiteral("xyz")}) {
            QString typed;
            for (const QChar letter : needle) {
                typed += letter;
                Measure(qPrintable(QStringLiteral("typing \"%1\"").arg(typed)),
                        [&] { Press(SearchBox(), 0, Qt::NoModifier, QString(letter)); });
            }
            Measure("emptying the search box", [&] { SearchBox().clear(); });
        }
    }

    void Sorting() {
        for (const ArchiveField field : kTextFields) {
            for (const char* direction : {"ascending", "descending"})
                Measure(qPrintable(FieldName(field) + u' ' + QLatin1String(direction)),
                        [&] { Q_EMIT Grid().HeaderClicked(field); });
        }
        Measure("back to Interpret", [&] { Q_EMIT Grid().HeaderClicked(ArchiveField::Interpret); });
    }

    void Scrolling() {
        QScrollBar& bar = *Grid().verticalScrollBar();
        Measure("End", [&] { bar.setValue(bar.maximum()); });
        for (const int part : {3, 5, 7})
            Measure("dragging the scroll bar", [&] { bar.setValue(bar.maximum() / part); });
        Measure("a page down", [&] { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); });
        Measure("type-ahead", [&] { Press(Grid(), Qt::Key_M, Qt::NoModifier, QStringLiteral("m")); });
    }

    void Marking() {
        Measure("MAAlleTitelAuswaehlen", [&] { panel_.MAAlleTitelAuswaehlen(); });
        Measure("sorting with all titles marked", [&] { Q_EMIT Grid().HeaderClicked(ArchiveField::Jahr); });
        Measure("one title alone", [&] { panel_.GoToRow(12); });
    }

    void Categories() {
        CategoryBuild build(filled_.archive, filled_.data);
        build.Start();
        while (build.IsRunning())
            Idle(20);
        Measure("opening the tree", [&] { panel_.ShowTree(true); });
        auto& tree = *panel_.findChild<CategoryTree*>();
        Measure("unfolding Interpret", [&] { tree.expand(tree.model()->index(3, 0)); });
        Measure("unfolding Album", [&] { tree.expand(tree.model()->index(4, 0)); });
        const QModelIndex value = tree.model()->index(5, 0, tree.model()->index(3, 0));
        Measure("an artist of the tree", [&] { Q_EMIT tree.clicked(value); });
        Measure("closing the tree", [&] { panel_.ShowTree(false); });
        Measure("the list under the head of Album",
                [&] { Q_EMIT Grid().ValueListRequested(ArchiveField::Album, QRect(200, 100, 150, 24)); });
        panel_.findChild<QListView*>(QStringLiteral("lstKopf"))->window()->hide();
    }

    void Deleting() {
        panel_.GoToRow(100);
        Measure("deleting a title and showing the rest", [&] {
            filled_.archive.DeleteTitles(panel_.MarkedNumbers());
            panel_.Refresh();
        });
        Measure("bringing it back", [&] {
            filled_.archive.Undo();
            panel_.Refresh();
        });
    }

    void Writing() {
        TitleRecord title;
        title.Titel = QStringLiteral("Neu");
        title.Interpret = QStringLiteral("Niemand");
        title.Pfad = QStringLiteral("/neu.mp3");
        Measure("a new title", [&] {
            filled_.archive.AddTitle(title);
            panel_.Refresh();
        });
        Measure("its title changed", [&] {
            title.Titel = QStringLiteral("Anders");
            filled_.archive.UpdateRecord(title);
            panel_.Refresh();
        });
    }

    bench::FilledArchive& filled_;
    Settings settings_;
    ArchivePanel panel_;
    int target_;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    SkinStyle::Apply(application, QStringLiteral("Dark Blue"), QStringLiteral("klein"), QStringLiteral("klein"));
    QStringList sizes = QCoreApplication::arguments().mid(1);
    if (sizes.isEmpty())
        sizes = {QStringLiteral("100000"), QStringLiteral("1000000")};
    for (const QString& size : std::as_const(sizes))
        if (const int titles = size.toInt(); titles > 0)
            Desk(titles).Run();
    return 0;
}
