// tests/e2e/window_test.h -- the fixture of tests that look at the window: a desktop, a folder
// and one run of Quillgrove.
#pragma once

#include "tests/e2e/box_view.h"
#include "tests/e2e/desktop.h"
#include "tests/e2e/desktop_view.h"
#include "tests/e2e/hands.h"
#include "tests/e2e/program.h"
#include "tests/support/folder.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

class WindowTest : public testing::Test {
  protected:
    WindowTest();
    void SetUp() override;
    /// Leaves the last picture in PICTURES_DIR when the test has failed.
    void TearDown() override;

    /// Starts Quillgrove on tones.pt of the test's folder, which it writes, with these options
    /// (none when empty), and waits for its window to stand still.
    void show(const std::string &options);

    /// The same for any arguments; `title` is the file's name as the window shows it.
    void start(const std::vector<std::string> &arguments, const std::string &title_name);

    /// The same without waiting for a picture.
    void launch(const std::vector<std::string> &arguments, const std::string &title_name);

    /// Takes the picture again when it stands still.
    void look();

    /// The pixel that holds a scene point of the last picture, for its size and the pose.
    Rgb pixel(double x, double y, double z = 0.0) const;
    Spot spot(double x, double y, double z = 0.0) const;

    Folder folder;
    Desktop desktop;
    DesktopView screen;
    std::unique_ptr<Program> program;
    WindowId window = 0;
    std::unique_ptr<Hands> hands;
    Image picture;
    Pose pose; // kept by tests that drag the view
};
