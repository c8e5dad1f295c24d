#include "FullDisk.h"
#include "Journal.h"
#include "LogRecorder.h"
#include <MPL_Utils.h>

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using MPL::MplUtils;
using namespace MPL::Doubles;

TEST(Files, AreReadBackAsTheyWereWritten)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("f");
    for (const QString& text : QStringList{"first, and longer", "ä€\n\"\t", QString()}) {
        QString read = "before";
        EXPECT_TRUE(MplUtils::WriteFile(path, text));
        EXPECT_TRUE(MplUtils::ReadFile(path, read));
        EXPECT_EQ(read, text);
    }
}

TEST(Files, ThatCantBeReadLeaveTheTextAlone)
{
    const QTemporaryDir folder;
    // No file, a folder, a file that opens and then fails.
    for (const QString& path : QStringList{folder.filePath("none"), folder.path(), "/proc/self/mem"}) {
        QString text = "before";
        EXPECT_FALSE(MplUtils::ReadFile(path, text)) << qPrintable(path);
        EXPECT_EQ(text, "before");
    }
}

TEST(Files, StayWholeWhenTheDiskIsFull)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("f");
    ASSERT_TRUE(MplUtils::WriteFile(path, "old"));

    const LogRecorder log;
    // It fills up while the text is written, or only with the last of it.
    for (const int size : {100000, 5000}) {
        const FullDisk full(4096);
        EXPECT_FALSE(MplUtils::WriteFile(path, QString(size, 'n')));
    }
    EXPECT_EQ(Notes("critical: MPL::MplUtils::WriteFile -- " + path).size(), 2);
    QString read;
    EXPECT_TRUE(MplUtils::ReadFile(path, read));
    EXPECT_EQ(read, "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "a half-written file is left";
}

} // namespace
