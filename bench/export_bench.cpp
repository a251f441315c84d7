// Exports of 1,000,000 points as SPEAR partials and as a partials list, against plain fprintf of
// the same lines, with the same bytes; and the SDIF grid of 500 partials over 10 s, echoed on the
// console, against a search that restarts at each partial's head. Ends with status 1 when a file
// differs or an export takes longer than its plain form.

#include "export/export3d.h"
#include "live/live.h"
#include "store/recompute.h"
#include "store/slots.h"
#include "toolbox/auxilliary3d.h"
#include "toolbox/auxmath3d.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int repetitions = 5; // the best one counts, as other work may disturb one

std::string folder;

std::string path(const char *name) {
    return folder + "/" + name;
}

/// Standard output goes nowhere and standard input holds `replies` for as long as it lives.
class Dialogue {
  public:
    explicit Dialogue(const std::string &replies) : kept(dup(STDOUT_FILENO)), kept_input(stdin) {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
        stdin = std::tmpfile();
        std::fwrite(replies.data(), 1, replies.size(), stdin);
        std::rewind(stdin);
    }
    ~Dialogue() {
        std::fflush(stdout);
        dup2(kept, STDOUT_FILENO);
        close(kept);
        std::fclose(stdin);
        stdin = kept_input;
    }
    Dialogue(const Dialogue &) = delete;
    Dialogue &operator=(const Dialogue &) = delete;

  private:
    int kept;
    FILE *kept_input;
};

std::string contents(const std::string &name) {
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// `count` partials of `points` points each over `seconds`, with digits in all decimals.
void fill(int32_t count, int32_t points, float seconds) {
    free_store();
    reset_store_globals();
    partials = count;
    allocate_counts(count);
    allocate_index(count);
    std::fill(npoints, npoints + count, points);
    allocate_points();
    for (int32_t i = 0; i < count; ++i) {
        for (int32_t j = 0; j < points; ++j) {
            const auto x = static_cast<float>(j);
            const auto y = static_cast<float>(i);
            parray[i][j].time = x * seconds / static_cast<float>(points - 1);
            parray[i][j].freq = 50.0f + 9.87f * y + 3.0f * std::sin(x * 0.37f + y);
            parray[i][j].amp = -40.0f + 30.0f * std::cos(x * 0.11f + y);
        }
    }
    regrow_peval();
    averages(partials, npoints, parray, peval);
    recompute_everything();
}

// --- the plain forms ---------------------------------------------------------------------------

void plain_list(const std::string &name) {
    FILE *file = std::fopen(name.c_str(), "w");
    std::fprintf(file, "( PARTIALS\t%d\n", partials);
    for (int32_t i = 0; i < partials; ++i) {
        std::fprintf(file, "( POINTS\t%d\n", npoints[i]);
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint &p = parray[i][j];
            std::fprintf(file, "%9.3f\t%9.3f\t%9.3f\n", static_cast<double>(p.time),
                         static_cast<double>(p.freq), static_cast<double>(p.amp));
        }
        std::fputs(")\n", file);
    }
    std::fputs(")\n", file);
    std::fclose(file);
}

void plain_spear(const std::string &name) {
    FILE *file = std::fopen(name.c_str(), "w");
    const float ref = db2amp(maxamp);
    std::fprintf(file,
                 "par-text-partials-format\npoint-type time frequency amplitude\n"
                 "partials-count %d\npartials-data\n",
                 partials);
    for (int32_t i = 0; i < partials; ++i) {
        std::fprintf(file, "%d %d %f %f\n", i, npoints[i], static_cast<double>(parray[i][0].time),
                     static_cast<double>(parray[i][0].phase));
        for (int32_t j = 0; j < npoints[i]; ++j) {
            const Breakpoint &p = parray[i][j];
            std::fprintf(file, "%9.3f\t%9.3f\t%9.3f\n", static_cast<double>(p.time),
                         static_cast<double>(p.freq), static_cast<double>(db2amp(p.amp) / ref));
        }
    }
    std::fclose(file);
}

/// A line of the grid on both streams.
template <typename... Values> void both(FILE *file, const char *format, Values... values) {
    std::fprintf(file, format, values...);
    std::printf(format, values...);
}

struct PlainRow {
    int32_t index;
    double freq, amp, phase;
};

/// The frames alone, behind whatever head the export wrote.
void plain_grid(const std::string &name, float step) {
    FILE *file = std::fopen(name.c_str(), "w");
    std::vector<PlainRow> rows;
    for (float t = sndstart; t < sndlen; t += step) {
        rows.clear();
        for (int32_t i = 0; i < partials; ++i) {
            const Breakpoint *p = parray[i];
            if (t < p[0].time || t > p[npoints[i] - 1].time) {
                continue;
            }
            int32_t k = 1;
            while (k < npoints[i] && !(p[k].time > t)) {
                ++k;
            }
            if (k == npoints[i]) {
                continue;
            }
            if (i != 0) {
                t = static_cast<float>(static_cast<double>(t) + 0.001);
                std::fputs("ascending time order error present", stdout);
            }
            const auto at = [&](float y1, float y0) {
                return linear_interpolation(t, p[k].time, p[k - 1].time, y1, y0);
            };
            rows.push_back({i + 1, std::fabs(std::min(at(p[k].freq, p[k - 1].freq), 20000.0f)),
                            db2amp(at(p[k].amp, p[k - 1].amp)) * live_gain,
                            at(p[k].phase, p[k - 1].phase)});
        }
        both(file, "\n1TRC\t1\t0\t%f\n", static_cast<double>(t));
        both(file, "  1TRC\t0x0004\t%d\t4\n", static_cast<int>(rows.size()));
        for (const PlainRow &row : rows) {
            both(file, "\t%d\t%f\t%f\t%f\n", row.index, row.freq, row.amp, row.phase);
        }
    }
    std::fclose(file);
}

// --- both sides by the clock -------------------------------------------------------------------

struct Comparison {
    const char *what;
    std::function<void()> plain;
    std::function<void()> ours;
    std::function<bool()> equal;
};

double milliseconds(const std::function<void()> &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    return took.count();
}

bool compare(const Comparison &sides) {
    double plain = 1e30;
    double ours = 1e30;
    for (int k = 0; k < repetitions; ++k) {
        plain = std::min(plain, milliseconds(sides.plain));
        for (const char *old : {"ours", "ours.pt"}) {
            unlink(path(old).c_str());
        }
        ours = std::min(ours, milliseconds(sides.ours));
        if (!sides.equal()) {
            std::printf("%s: the files differ\n", sides.what);
            return false;
        }
    }
    std::printf("%-28s plain %8.1f ms, ours %8.1f ms, plain / ours = %.2f\n", sides.what, plain,
                ours, plain / ours);
    return ours <= plain;
}

bool same_file(const char *name) {
    return contents(path("plain")) == contents(path(name));
}

/// The export's frames, without its head and end, are the plain ones.
bool same_frames() {
    const std::string frames = contents(path("plain"));
    const std::string whole = contents(path("ours"));
    const size_t start = whole.find("SDFC\n") + 5;
    return whole.compare(start, std::string::npos, frames + "\nENDC\nENDF\n") == 0;
}

bool compare_all() {
    fill(2000, 500, 10.0f);
    const Comparison list = {"list, 1,000,000 points", [] { plain_list(path("plain")); },
                             [] {
                                 const Dialogue dialogue(path("ours") + "\n");
                                 char name[list_path_size] = "";
                                 audiosculpt3d(parray, npoints, partials, name);
                             },
                             [] { return same_file("ours.pt"); }};
    const Comparison of_spear = {"SPEAR, 1,000,000 points", [] { plain_spear(path("plain")); },
                                 [] {
                                     const Dialogue dialogue(path("ours") + "\n");
                                     spear(sndstart, sndlen, maxamp, parray, npoints, partials);
                                 },
                                 [] { return same_file("ours"); }};
    bool good = compare(list);
    good = compare(of_spear) && good;
    fill(500, 1000, 10.0f);
    constexpr float step = 512.0f / 44100.0f;
    const Comparison grid = {"SDIF, 500 partials, 10 s",
                             [] {
                                 const Dialogue dialogue("");
                                 plain_grid(path("plain"), step);
                             },
                             [] {
                                 const Dialogue dialogue(path("ours") + "\n0\n");
                                 sdif(sndstart, sndlen, maxamp, parray, npoints, partials, 0);
                             },
                             same_frames};
    return compare(grid) && good;
}

} // namespace

int main() {
    char made[] = "/tmp/quillgrove-export-XXXXXX";
    if (mkdtemp(made) == nullptr) {
        return EXIT_FAILURE;
    }
    folder = made;
    const bool good = compare_all();
    for (const char *name : {"plain", "ours", "ours.pt"}) {
        unlink(path(name).c_str());
    }
    rmdir(made);
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
