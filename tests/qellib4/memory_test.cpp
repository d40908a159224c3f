// memory_test.cpp: what streams, blobs and the log take from memory, and what is left when there is none.
#include "../support/allocations.h"
#include "../support/hex.h"
#include "../support/recording_log.h"
#include "../support/temporary_folder.h"

#include <gtest/gtest.h>
#include <qellib4/qelexception.h>

#include <new>

namespace {

using qeltest::AllocationCount;
using qeltest::CFailingMemory;

TEST(LogMemory, EntryAboveTheLevelTakesNone)
{
    qeltest::CRecordingLog log(3);
    const std::size_t before = AllocationCount();
    log.AddInformal(L"a text that is longer than any small string", 4, 1, L".\\qelpropdb");
    log.AddInformal(17502u, 4, 1, L".\\qelpropdb");
    log.AddWarning(L"a text that is longer than any small string", 4, 1, L".\\qelpropdb");
    {
        CDovLogfileMethodTracker tracker(&log, 5, L"CQelPropDB::FillBulkCache", 1, L".\\qelpropdb");
        CDovLogfileMethodTracker none(nullptr, 5, L"CQelPropDB::FillBulkCache", 1, L".\\qelpropdb");
    }
    EXPECT_EQ(AllocationCount() - before, 0u);
}

TEST(LogMemory, EntryThatCannotBeMadeIsLostWithoutAThrow)
{
    qeltest::CTemporaryFolder folder;
    CDovLogfile log;
    ASSERT_TRUE(log.Open(folder.Path(L"log.txt")));
    CQelException exception(17500, 0, L".\\qelpropdb", 1, false);
    for (std::size_t allowed = 0;; ++allowed) {
        bool written = false;
        bool hit = false;
        {
            const CFailingMemory failing(allowed);
            CDovLogfileMethodTracker tracker(&log, 1, L"CQelPropDB::FillBulkCache", 1, L".\\qelpropdb");
            written = log.AddError(&exception, 1, L".\\qelpropdb");
            hit = failing.Hit();
        }
        if (!hit) {
            EXPECT_TRUE(written);
            break;
        }
    }
}

TEST(StreamMemory, IntegersFlagsAndBytesTakeNone)
{
    const std::size_t before = AllocationCount();
    CQelMemFile file(false, 4096, 4096);
    TavBlob blob;
    file << static_cast<unsigned short>(1) << 2 << 3u << 4ul << true;
    file.Rewind();
    blob.Load(&file);
    blob.Store(&file);
    EXPECT_EQ(AllocationCount() - before, 0u);
}

TEST(StreamMemory, TextIsWrittenWithoutAny)
{
    const std::wstring text(5000, L'x');
    CQelMemFile file(false, 65536, 4096);
    const std::size_t before = AllocationCount();
    file << text;
    EXPECT_EQ(AllocationCount() - before, 0u);
}

TEST(StreamMemory, CountThatTheBytesCannotFillIsRefusedBeforeAnyIsTaken)
{
    CQelMemFile file(false, 16, 16);
    qeltest::Fill(file, "ffffffff 61006200");
    std::wstring text;
    const auto isRefused = [&] {
        try {
            file >> text;
            return false;
        } catch (CQelException* exception) {
            exception->Delete();
            return true;
        }
    };
    const std::size_t before = AllocationCount();
    const bool refused = isRefused();
    const std::size_t taken = AllocationCount() - before;
    EXPECT_TRUE(refused);
    EXPECT_LE(taken, 2u); // the exception and its file name
}

} // namespace
