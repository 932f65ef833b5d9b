#include "system/LiveDesk.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <gtest/gtest.h>

namespace kalvo::test {

LiveDesk::LiveDesk(const QString& dataFolder) : module_(qEnvironmentVariable("KALVO_BIN")) {
    std::unique_ptr<audio::AudioLibrary> library = module_.Create();
    if (!library) {
        ADD_FAILURE() << "no audio module";
        return;
    }
    QFile::remove(dataFolder + QStringLiteral("/sitzung.json")); // a scenario that runs once more is no crash
    desk_ = std::make_unique<Desk>(DataFolder(dataFolder), std::move(library));
    window_ = std::make_unique<Form1>(*desk_, CommandLine());
    open_ = window_->Load();
    EXPECT_TRUE(open_);
    // Wide enough for every control to have its place.
    window_->resize(1280, 800);
    window_->show();
    QObject::connect(&desk_->mixer, &Mixer::Message, window_.get(), [this] { told_ << Text("lblMeldung"); });
    Press("hscroll1", Qt::Key_End);
}

void LiveDesk::Fill(int player, const QStringList& paths) {
    QList<PlaylistEntry> entries;
    for (const QString& path : paths) {
        PlaylistEntry entry;
        entry.title = QFileInfo(path).completeBaseName();
        entry.path = path;
        entries << entry;
    }
    desk_->List(player).Append(entries);
}

template<typename Send>
void LiveDesk::With(const char* control, Send send) {
    QWidget* widget = window_.get();
    for (const QString& name : QString::fromLatin1(control).split(u'/')) {
        if (widget)
            widget = widget->findChild<QWidget*>(name);
    }
    if (!widget || !widget->isVisible() || !widget->isEnabled()) {
        ADD_FAILURE() << control << " cannot be used";
        return;
    }
    send(*widget);
}

void LiveDesk::Trigger(const char* command) {
    auto* action = window_->findChild<QAction*>(QString::fromLatin1(command));
    ASSERT_TRUE(action != nullptr && action->isEnabled()) << command;
    action->trigger();
}

void LiveDesk::Activate(const char* control) {
    QApplication::setActiveWindow(window_.get());
    With(control, [](QWidget& widget) { widget.setFocus(); });
}

void LiveDesk::Click(const char* control) {
    ClickAt(control, 0.5);
}

void LiveDesk::ClickAt(const char* control, double fraction) {
    With(control, [fraction](QWidget& widget) {
        const QPointF at(fraction * (widget.width() - 1), widget.height() / 2.0);
        for (const auto& [type, held] : {std::pair(QEvent::MouseButtonPress, Qt::LeftButton),
                                         std::pair(QEvent::MouseButtonRelease, Qt::NoButton)}) {
            QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
            QApplication::sendEvent(&widget, &event);
        }
    });
}

void LiveDesk::Press(const char* control, Qt::Key key, int times) {
    With(control, [key, times](QWidget& widget) {
        for (int i = 0; i < 2 * times; ++i) {
            QKeyEvent event(i % 2 == 0 ? QEvent::KeyPress : QEvent::KeyRelease, key, Qt::NoModifier);
            QApplication::sendEvent(&widget, &event);
        }
    });
}

void LiveDesk::Select(const char* view, int row) {
    auto* rows = window_->findChild<QAbstractItemView*>(QString::fromLatin1(view));
    ASSERT_NE(rows, nullptr) << view;
    rows->selectionModel()->select(rows->model()->index(row, 0),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool LiveDesk::IsShown(const char* dialog) const {
    const auto* found = window_->findChild<QWidget*>(QString::fromLatin1(dialog));
    return found != nullptr && found->isVisible();
}

void LiveDesk::Close(const char* dialog) {
    With(dialog, [](QWidget& widget) { widget.close(); });
}

QString LiveDesk::Text(const char* label) const {
    const auto* found = window_->findChild<QLabel*>(QString::fromLatin1(label));
    return found ? found->text() : QString();
}

void RunFor(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace kalvo::test
