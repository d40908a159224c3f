// store_fixture.h: a store in a folder of its own, and short forms of its operations.
#pragma once

#include <gtest/gtest.h>
#include <qelfdb4/qelfdb4.h>
#include <support/result_matchers.h>
#include <support/temporary_folder.h>

#include <string>
#include <vector>

namespace qeltest {

inline unsigned int Put(CDovBlobDB& store, unsigned short selector, unsigned long oid,
                        const std::string& bytes, unsigned int priority = 0)
{
    return store.Set({selector, oid}, bytes.data(), static_cast<unsigned int>(bytes.size()), priority);
}

/// The record's bytes, or "code N" where they cannot be had.
inline std::string Take(const CDovBlobDB& store, unsigned short selector, unsigned long oid)
{
    TavBlob blob;
    if (const unsigned int code = store.Get({selector, oid}, blob); code != qel::kSuccess)
        return "code " + std::to_string(code);
    return std::string(blob.GetData(), blob.GetData() + blob.GetSize());
}

/// All records of a selector, "1=one 2=two".
inline std::string Dump(const CDovBlobDB& store, unsigned short selector)
{
    std::vector<unsigned long> oids;
    if (const unsigned int code = store.GetOids(selector, oids, false); code != qel::kSuccess)
        return "code " + std::to_string(code);
    std::string text;
    for (const unsigned long oid : oids)
        text += (text.empty() ? "" : " ") + std::to_string(oid) + "=" + Take(store, selector, oid);
    return text;
}

/// A closed store object and a path for it.
class CStoreFixture : public testing::Test
{
protected:
    void Create() { ASSERT_THAT(store.Create(path, 1), Succeeds()); }
    void Reopen(bool readOnly = false)
    {
        store.Close();
        ASSERT_THAT(store.Open(path, readOnly), Succeeds());
    }

    CTemporaryFolder folder;
    std::wstring path = folder.Path(L"s.qdb");
    CDovBlobDB store;
};

} // namespace qeltest
