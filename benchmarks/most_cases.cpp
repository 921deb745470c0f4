/// Runs auc and roccurve on as many cases as a call takes, 2^31 - 1, and compares them with the counts. The arrays show
/// one block of memory over and over, so that 34 GB of cases take 16 MiB.

#include "vexrocproc/arraycalls.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t blockCases = std::size_t{1} << 20;
constexpr std::size_t blockBytes = blockCases * sizeof(double);
constexpr std::size_t blocks = 2048;

/// 2^31 doubles, value(i) repeated from every 2^20th on; read only.
template <class Value>
const double* repeated(Value&& value)
{
    const int file = memfd_create("block", 0);
    void* const all = mmap(nullptr, blocks * blockBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    bool ok = file >= 0 && ftruncate(file, blockBytes) == 0 && all != MAP_FAILED;
    for (std::size_t block = 0; ok && block < blocks; ++block)
        ok = mmap(static_cast<char*>(all) + block * blockBytes, blockBytes, PROT_READ | PROT_WRITE,
                  MAP_SHARED | MAP_FIXED, file, 0)
            != MAP_FAILED;
    if (!ok) {
        std::perror("most_cases: no memory to map");
        std::exit(2);
    }
    double* const first = static_cast<double*>(all);
    for (std::size_t i = 0; i < blockCases; ++i)
        first[i] = value(i);
    return first;
}

} // namespace

int main()
{
    constexpr int n = std::numeric_limits<int>::max();
    // Scores 0 to 3 in turn; positive are the cases 2 and 3 of every eight. The case that does not fit would be an 8th.
    const double* const states = repeated([](std::size_t i) { return i % 8 == 2 || i % 8 == 3 ? 1.0 : 0.0; });
    const double* const scores = repeated([](std::size_t i) { return static_cast<double>(i % 4); });
    const double eighths = 0x1p28;
    const double positives = 2 * eighths;
    const double negatives = 6 * eighths - 1;
    // Negatives at the scores 0 to 3: 2, 2, 1 and 1 eighths, the last one less a case.
    const double ordered = eighths * (4 * eighths + 0.5 * eighths) + eighths * (5 * eighths + 0.5 * (eighths - 1));
    const double area = ordered / (positives * negatives);

    const auc_res res = auc(states, scores, n, nullptr, "include", "larger", "nonparam", 0.95);
    const roccurve_res curve = roccurve(states, scores, n, nullptr, "include", "larger");
    const bool areaRight = res.posCount == positives && res.negCount == negatives && std::abs(res.area - area) <= 1e-15;
    const bool curveRight =
        curve.count == 5 && curve.rows[3 * 3 + 1] == 1.0 - 5 * eighths / negatives && curve.rows[3 * 3 + 2] == 0.5;
    std::printf("%d cases: area %.17g, counted %.17g, standard error %.3g: %s; curve of %d rows: %s\n", n, res.area,
                area, res.stdError, areaRight ? "right" : "WRONG", curve.count, curveRight ? "right" : "WRONG");
    release_roccurve_res(curve);
    return areaRight && curveRight ? 0 : 1;
}
