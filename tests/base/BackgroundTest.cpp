#include "base/BackgroundWorker.h"
#include "base/BackgroundWriter.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QThread>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <semaphore>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(BackgroundWorker, AnswersComeInOrderOnTheOwnersThread) {
    BackgroundWorker worker;
    QList<int> answers;
    const QThread* owner = QThread::currentThread();
    for (int number = 0; number < 20; ++number) {
        worker.Do([&answers, number, owner]() -> BackgroundWorker::Answer {
            EXPECT_NE(QThread::currentThread(), owner);
            return [&answers, number, owner] {
                EXPECT_EQ(QThread::currentThread(), owner);
                answers.append(number);
            };
        });
    }
    ASSERT_TRUE(test::WaitUntil([&] { return answers.size() == 20; }));
    EXPECT_TRUE(std::is_sorted(answers.begin(), answers.end()));
}

TEST(BackgroundWorker, WaitingJobsCanBeDropped) {
    BackgroundWorker worker;
    std::binary_semaphore begun{0};
    std::binary_semaphore goOn{0};
    QStringList done;
    const auto job = [&done](const QString& name) {
        return [&done, name]() -> BackgroundWorker::Answer { return [&done, name] { done += name; }; };
    };
    worker.Do([&]() -> BackgroundWorker::Answer {
        begun.release();
        goOn.acquire();
        return [&done] { done += u"erster"_s; };
    });
    begun.acquire();
    worker.Do(job(u"verworfen"_s));
    worker.DropWaiting();
    worker.Do(job(u"letzter"_s));
    goOn.release();
    ASSERT_TRUE(test::WaitUntil([&] { return done.contains(u"letzter"_s); }));
    EXPECT_EQ(done, (QStringList{u"erster"_s, u"letzter"_s}));
}

TEST(BackgroundWorker, TheEndDropsAnswersAndDoesNotWaitForWhatHangs) {
    struct Shared {
        std::binary_semaphore begun{0};
        std::binary_semaphore goOn{0};
        std::atomic<bool> over{false};
    };
    const auto shared = std::make_shared<Shared>();
    bool answered = false;
    {
        BackgroundWorker worker;
        worker.Do([shared, &answered]() -> BackgroundWorker::Answer {
            shared->begun.release();
            shared->goOn.acquire();
            return [shared, &answered] { answered = true; };
        });
        worker.Do([shared]() -> BackgroundWorker::Answer {
            shared->over = true;
            return {};
        });
        shared->begun.acquire();
    }
    shared->goOn.release();
    QCoreApplication::processEvents();
    EXPECT_FALSE(answered);
    EXPECT_FALSE(shared->over) << "what was waiting is not done";
}

TEST(BackgroundWriter, LeavesTheLastContentOfEachFile) {
    const test::TestFolder folder;
    BackgroundWriter writer;
    for (int number = 0; number <= 50; ++number) {
        writer.Write(folder.Path(u"a"_s), QByteArray::number(number));
        writer.Write(folder.Path(u"b"_s), QByteArray::number(-number));
    }
    writer.Flush();
    EXPECT_EQ(folder.Read(u"a"_s), "50");
    EXPECT_EQ(folder.Read(u"b"_s), "-50");
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // no temporaries
}

TEST(BackgroundWriter, KeepsTheOrderOfWritesAndRemovals) {
    const test::TestFolder folder;
    const QString path = folder.Path(u"a"_s);
    BackgroundWriter writer;
    writer.Write(path, "old");
    writer.Remove(path);
    writer.Flush();
    EXPECT_FALSE(QFile::exists(path));
    writer.Remove(path);
    writer.Write(path, "new");
    writer.Flush();
    EXPECT_EQ(folder.Read(u"a"_s), "new");
}

TEST(BackgroundWriter, WritesWhatWaitsAtItsEndAndPassesOverWhatCannotBeWritten) {
    const test::TestFolder folder;
    {
        BackgroundWriter writer;
        writer.Write(folder.Path(u"no such folder/a"_s), "lost");
        writer.Write(folder.Path(u"z"_s), "kept");
    }
    EXPECT_EQ(folder.Read(u"z"_s), "kept");
}

} // namespace
} // namespace kalvo
