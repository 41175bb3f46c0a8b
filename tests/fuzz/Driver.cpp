// Stands in for libFuzzer: runs the target on so many mutations of the seeds, always the same ones.
//
//   sonvika-fuzz COUNT [FIRST]     inputs FIRST to FIRST + COUNT - 1; each bad one is reported by its number
//   sonvika-fuzz FILE...           these inputs

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr int patience = 2;
constexpr int worstFindings = 20;

#ifdef __SANITIZE_ADDRESS__
extern "C" const char* __asan_default_options()
{
    return "max_allocation_size_mb=1024:allocator_may_return_null=0";
}
void limitMemory() {}
#else
void limitMemory()
{
    constexpr rlim_t limit = rlim_t(1) << 30;
    const rlimit both{limit, limit};
    ::setrlimit(RLIMIT_AS, &both);
}
#endif

Bytes readFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Bytes> readSeeds()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA_DIR))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<Bytes> seeds;
    for (const auto& path : paths) {
        const auto kind = path.string().find("m4a") != std::string::npos ? 1
                          : path.extension() == ".wav"                   ? 2
                          : path.extension() == ".aiff"                  ? 3
                                                                         : 0;
        seeds.push_back(readFile(path));
        seeds.back().push_back(static_cast<std::uint8_t>(kind));
    }
    return seeds;
}

class Mutator {
public:
    Mutator(const std::vector<Bytes>& seeds, unsigned int number) : seeds_(seeds), random_(number) {}

    Bytes input()
    {
        Bytes bytes = seed();
        for (std::size_t i = below(6) + 1; i > 0; --i)
            mutate(bytes);
        return bytes;
    }

private:
    std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    const Bytes& seed() { return seeds_[below(seeds_.size())]; }

    /// Somewhere in the file, more often near its beginning, where headers are.
    std::size_t position(const Bytes& bytes)
    {
        return below(below(2) ? std::min<std::size_t>(bytes.size(), 400) : bytes.size());
    }

    void mutate(Bytes& bytes)
    {
        const std::size_t at = position(bytes);
        if (at >= bytes.size())
            return;
        const auto here = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        const auto length = static_cast<std::ptrdiff_t>(below(std::min<std::size_t>(bytes.size() - at, 300)));
        switch (below(7)) {
        case 0:
            *here ^= static_cast<std::uint8_t>(1U << below(8));
            break;
        case 1:
            *here = static_cast<std::uint8_t>(random_());
            break;
        case 2:
            bytes.erase(here, bytes.end() - 1);
            break;
        case 3:
            bytes.erase(here, here + length);
            break;
        case 4: {
            const Bytes copy(here, here + length);
            bytes.insert(here, copy.begin(), copy.end());
            break;
        }
        case 5: {
            const Bytes& other = seed();
            const auto from = other.begin() + static_cast<std::ptrdiff_t>(position(other));
            bytes.insert(here, from, from + std::min<std::ptrdiff_t>(other.end() - from, 300));
            break;
        }
        default:
            setNumber(bytes, at);
        }
    }

    void setNumber(Bytes& bytes, std::size_t at)
    {
        constexpr std::uint32_t numbers[]{0,          1,          7,          8,          9,
                                          0x7F,       0x100,      0xFFFF,     0x01000000, 0x7F7F7F7F,
                                          0x7FFFFFFF, 0x80000000, 0xFFFFFFF8, 0xFFFFFFFF};
        const std::uint32_t number = numbers[below(std::size(numbers))];
        const bool bigEndian = below(2) == 0;
        for (std::size_t i = 0; i < 4 && at + i < bytes.size(); ++i)
            bytes[at + i] = static_cast<std::uint8_t>(number >> 8 * (bigEndian ? 3 - i : i));
    }

    const std::vector<Bytes>& seeds_;
    std::mt19937 random_;
};

/// Ends the process by a signal when one input takes too much processor time.
void run(const Bytes& bytes)
{
    const itimerval limit{{0, 0}, {patience, 0}};
    ::setitimer(ITIMER_PROF, &limit, nullptr);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

int runFiles(int count, char** paths)
{
    limitMemory();
    for (int i = 0; i < count; ++i)
        run(readFile(paths[i]));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::filesystem::exists(argv[1]))
        return runFiles(argc - 1, argv + 1);
    const unsigned long count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000;
    const unsigned long first = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 0;
    const auto seeds = readSeeds();
    void* shared =
        ::mmap(nullptr, sizeof(std::atomic_ulong), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& number = *new (shared) std::atomic_ulong(first);
    int findings = 0;
    for (; number < first + count && findings < worstFindings; ++number) {
        if (const pid_t child = ::fork(); child == 0) {
            limitMemory();
            for (; number < first + count; ++number)
                run(Mutator(seeds, static_cast<unsigned int>(number)).input());
            std::exit(0);
        } else {
            int status = 0;
            ::waitpid(child, &status, 0);
            if (status == 0)
                break;
            ++findings;
            std::printf("input %lu: %s %d\n", number.load(), WIFSIGNALED(status) ? "signal" : "exit",
                        WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
            std::fflush(stdout);
        }
    }
    std::printf("%lu inputs from %lu on, %d bad\n", count, first, findings);
    return findings == 0 ? 0 : 1;
}
