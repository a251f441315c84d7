#include "tests/e2e/window_test.h"

#include "tests/e2e/expected.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

WindowTest::WindowTest() : screen(desktop.display()) {}

void WindowTest::SetUp() {
    ASSERT_FALSE(desktop.display().empty()) << "Xvfb did not start";
}

void WindowTest::TearDown() {
    if (!HasFailure() || picture.width == 0) {
        return;
    }
    std::filesystem::create_directories(PICTURES_DIR);
    const testing::TestInfo *info = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "." + info->name() + ".ppm";
    std::replace(name.begin(), name.end(), '/', '-');
    const std::string path = PICTURES_DIR "/" + name;
    picture.save(path);
    std::printf("the last picture: %s\n", path.c_str());
}

void WindowTest::show(const std::string &options) {
    folder.write("tones.pt", tones_file());
    std::vector<std::string> arguments = {"tones.pt"};
    if (!options.empty()) {
        arguments.push_back(options);
    }
    start(arguments, "tones.pt");
}

void WindowTest::start(const std::vector<std::string> &arguments, const std::string &title_name) {
    launch(arguments, title_name);
    look();
}

void WindowTest::launch(const std::vector<std::string> &arguments, const std::string &title_name) {
    program = std::make_unique<Program>(Launch{arguments, folder.path(), desktop.display(), true});
    // Thrown, as nothing of the test can go on without the window.
    if (!program->expect("max clip planes = ")) {
        throw std::runtime_error("the program did not begin: " + program->output());
    }
    window = screen.find("Quillgrove: " + title_name);
    if (window == 0) {
        throw std::runtime_error("the window did not appear: " + program->output());
    }
    hands = std::make_unique<Hands>(screen, desktop.display(), window);
}

void WindowTest::look() {
    picture = screen.settled(window);
    ASSERT_FALSE(picture.blank());
}

Spot WindowTest::spot(double x, double y, double z) const {
    return BoxView(picture.width, picture.height, pose).spot(x, y, z);
}

Rgb WindowTest::pixel(double x, double y, double z) const {
    return picture.at(spot(x, y, z));
}
