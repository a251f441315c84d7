#include "tests/support/analysis_file.h"

#include "store/misc.h"
#include "store/reading.h"
#include "store/settings.h"
#include "store/store.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

ChildResult start_on_path(const std::string &path, const std::string &input, ChildLimits limits) {
    return in_child(
        input,
        [&] {
            std::snprintf(afname, sizeof afname, "%s", path.c_str());
            TokenFile file;
            open_analysis(file);
            import_analysis(file);
            complete_store();
            std::puts("STORE");
            print_members(parray, npoints, partials);
        },
        limits);
}

ChildResult start_on(const std::string &text, const std::string &input, ChildLimits limits) {
    char folder[] = "/tmp/quillgrove-analysis-XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        std::abort();
    }
    const std::string path = std::string(folder) + "/a.pt";
    FILE *file = std::fopen(path.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    ChildResult result = start_on_path(path, input, limits);
    unlink(path.c_str());
    rmdir(folder);
    for (size_t at; (at = result.out.find(path)) != std::string::npos;) {
        result.out.replace(at, path.size(), "a.pt");
    }
    return result;
}
