// store_file_fuzz.cpp: a damaged store file is opened, read, tested, changed and compacted.
#include <qelfdb4/qelfdb4.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr unsigned short kSelector = 1000;

/// What the record with this oid holds in a sound store.
std::string SoundBytes(unsigned int oid)
{
    return std::string(std::size_t{oid} * 13, static_cast<char>('a' + oid % 26));
}

/// A folder for this process and, in it, the bytes of a sound store that inputs are laid over.
class CGround
{
public:
    CGround() : m_folder(fs::temp_directory_path() / ("qel_store_fuzz." + std::to_string(std::rand())))
    {
        const fs::path memory = "/dev/shm";
        if (fs::is_directory(memory))
            m_folder = memory / m_folder.filename();
        fs::create_directories(m_folder);
        MakeSound();
    }
    ~CGround() { fs::remove_all(m_folder); }

    std::wstring Path() const { return (m_folder / "s.qdb").wstring(); }
    const std::string& Sound() const { return m_sound; }
    void Lay(const std::string& bytes) const
    {
        for (const char* name : {"s.qdb-wal", "s.qdb-journal", "s.qdb-shm"})
            fs::remove(m_folder / name);
        std::ofstream(m_folder / "s.qdb", std::ios::binary) << bytes;
    }

private:
    void MakeSound()
    {
        CDovBlobDB store;
        store.Create(Path(), 1);
        for (unsigned int oid = 1; oid <= 40; ++oid) {
            const std::string bytes = SoundBytes(oid);
            store.Set({kSelector, oid}, bytes.data(), static_cast<unsigned int>(bytes.size()), 0);
        }
        const std::string large(9000, 'z');
        store.Set({kSelector, 41}, large.data(), static_cast<unsigned int>(large.size()), 0);
        store.Close();
        std::ifstream file(m_folder / "s.qdb", std::ios::binary);
        m_sound.assign(std::istreambuf_iterator<char>(file), {});
    }

    fs::path m_folder;
    std::string m_sound;
};

/// The input is a list of patches: 2 bytes of place in units of 4, 1 byte of length, that many bytes. An
/// input that begins as a database does is a file of its own.
std::string Patched(const std::string& sound, const unsigned char* data, std::size_t size)
{
    if (size > 16 && std::equal(data, data + 16, reinterpret_cast<const unsigned char*>(sound.data())))
        return std::string(data, data + size);
    std::string bytes = sound;
    while (size >= 3) {
        const std::size_t at = (data[0] + std::size_t{256} * data[1]) * 4 % bytes.size();
        const std::size_t length = std::min<std::size_t>({data[2] % 16U, size - 3, bytes.size() - at});
        std::copy(data + 3, data + 3 + length, bytes.begin() + static_cast<std::ptrdiff_t>(at));
        data += 3 + length;
        size -= 3 + length;
    }
    return bytes;
}

void ReadAll(const CDovBlobDB& store)
{
    std::vector<unsigned long> oids;
    store.GetOids(kSelector, oids, false);
    TavBlob blob;
    for (const unsigned long oid : oids)
        store.Get({kSelector, oid}, blob);
    for (unsigned int oid = 1; oid <= 40; ++oid) {
        const std::string sound = SoundBytes(oid);
        if (store.Get({kSelector, oid}, blob) == qel::kSuccess &&
            !std::equal(sound.begin(), sound.end(), blob.GetData(), blob.GetData() + blob.GetSize()))
            std::abort(); // wrong bytes under a right checksum
    }
}

void Use(CDovBlobDB& store)
{
    ReadAll(store);
    CQelMemFile report(false, 4096, 4096);
    unsigned long faults = 0;
    store.SelfTest(&report, faults, nullptr, 0);
    if (store.IsReadOnly())
        return;
    store.Set({kSelector, 7}, "new", 3, 0);
    store.Remove({kSelector, 8});
    store.RemoveSelector(2);
    store.Optimize(L"", nullptr, 0, false);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const CGround ground;
    for (const bool readOnly : {true, false}) {
        ground.Lay(Patched(ground.Sound(), data, size));
        CDovBlobDB store;
        if (store.Open(ground.Path(), readOnly) == qel::kSuccess)
            Use(store);
    }
    return 0;
}
