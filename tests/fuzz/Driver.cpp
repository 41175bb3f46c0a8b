// Stands in for libFuzzer: runs the target on so many mutations of the seeds, always the same ones.
//
//   sonvika-fuzz COUNT [FIRST]     inputs FIRST to FIRST + COUNT - 1, until one is bad: its number is told

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
#include <set>
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

std::vector<Bytes> readSeeds()
{
    using Folder = std::filesystem::directory_iterator;
    std::vector<Bytes> seeds;
    for (const auto& path : std::set<std::filesystem::path>(Folder(TEST_DATA_DIR), Folder())) {
        std::ifstream file(path, std::ios::binary);
        const std::string name = path.filename().string();
        const auto has = [&](const char* type) { return name.find(type) != std::string::npos; };
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        seeds.back().push_back(has("m4a") ? 1 : has(".wav") ? 2 : has(".aiff") ? 3 : 0);
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
        const Bytes other = below(2) == 0 ? bytes : seed();
        const auto from = other.begin() + static_cast<std::ptrdiff_t>(position(other));
        switch (below(4)) {
        case 0:
            *here ^= static_cast<std::uint8_t>(below(2) == 0 ? 1U << below(8) : random_());
            break;
        case 1:
            bytes.erase(here, below(2) == 0 ? here + length : bytes.end() - 1);
            break;
        case 2:
            bytes.insert(here, from, from + std::min(other.end() - from, length));
            break;
        default:
            setNumber(bytes, at);
        }
    }

    void setNumber(Bytes& bytes, std::size_t at)
    {
        constexpr std::uint32_t numbers[]{0,      1,          7,          8,          9,          0x7F,      0x100,
                                          0xFFFF, 0x01000000, 0x7F7F7F7F, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF8};
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
    const itimerval limit{{0, 0}, {2, 0}};
    ::setitimer(ITIMER_PROF, &limit, nullptr);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int argc, char** argv)
{
    const unsigned long count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000;
    const unsigned long first = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 0;
    // The child counts where this process sees it.
    void* shared =
        ::mmap(nullptr, sizeof(std::atomic_ulong), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& number = *new (shared) std::atomic_ulong(first);
    if (::fork() == 0) {
        limitMemory();
        const auto seeds = readSeeds();
        for (; number < first + count; ++number)
            run(Mutator(seeds, static_cast<unsigned int>(number)).input());
        std::exit(0);
    }
    int status = 1;
    ::wait(&status);
    if (status == 0)
        std::printf("%lu inputs from %lu on, none of them bad\n", count, first);
    else
        std::printf("input %lu: %s %d\n", number.load(), WIFSIGNALED(status) ? "signal" : "exit",
                    WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
    return status == 0 ? 0 : 1;
}
