// The built program, run as a player or a script would run it: from a folder without the data,
// with the command line, in a window (the tests run under Xvfb), writing a screenshot.
#include "Platform/VeFiles.h"
#include "Screen/Surface/VePNGFile.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <sys/wait.h>

// Last: its macros (None, Bool, Status) would clash with names in the headers above.
#include <X11/Xlib.h>

namespace fs = std::filesystem;

namespace {
struct Outcome {
    int exitCode = -1;
    std::string output;
};

// The top-level windows made and shown on the X server while it watches (the tests run under
// Xvfb), as a player would see them.
class WindowWatch {
public:
    WindowWatch() : display(XOpenDisplay(nullptr)) {
        if (display != nullptr) {
            XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
            XSync(display, False);
        }
    }
    ~WindowWatch() {
        if (display != nullptr) {
            XCloseDisplay(display);
        }
    }
    bool Watching() const { return display != nullptr; }
    // Reads what happened so far: windows made at a size, and the windows shown.
    void Collect(int width, int height) {
        XSync(display, False);
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == CreateNotify && event.xcreatewindow.width == width &&
                event.xcreatewindow.height == height) {
                ++madeAtSize;
            } else if (event.type == MapNotify) {
                shown.insert(event.xmap.window);
            }
        }
    }

    int madeAtSize = 0;
    std::set<Window> shown;

private:
    Display* display;
};

class ProgramRun : public ::testing::Test {
protected:
    void SetUp() override {
        program = fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "quillmaze";
        if (!fs::exists(program)) {
            GTEST_SKIP() << "the program is not built beside the tests: " << program;
        }
        working = fs::path(userData.path) / "elsewhere";
        fs::create_directories(working);
    }

    Outcome Run(const std::string& arguments) {
        const fs::path log = fs::path(userData.path) / "output.txt";
        const std::string command = "cd '" + working.string() +
                                    "' && QUILLMAZE_NO_DIALOGS=1 SDL_AUDIODRIVER=dummy '" + program.string() +
                                    "' " + arguments + " > '" + log.string() + "' 2>&1";
        const int status = std::system(command.c_str());
        Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ""};
        ReadFileBytes(log.string(), outcome.output);
        return outcome;
    }

    TempUserData userData;
    fs::path program;
    fs::path working;
};
} // namespace

// Ten frames with the frame-rate display, the screenshot named relative to the folder the program
// was started in (not its data folder): the text at the top centre in the display's colours and
// nowhere else. The game opens its one window once: no other window is made at its size or shown.
TEST_F(ProgramRun, OpensOneWindowAndShowsTheFrameRate) {
    WindowWatch windows;
    // On the frame-locked clock the ten frames stay within the intro however slow the machine.
    const Outcome outcome = Run("--frames 10 --fixed-dt 0.016 --screenshot shot.png --fps");
    ASSERT_EQ(outcome.exitCode, 0) << outcome.output;
    ASSERT_TRUE(windows.Watching());
    windows.Collect(640, 640);
    EXPECT_EQ(windows.madeAtSize, 1);
    EXPECT_EQ(windows.shown.size(), 1u);
    EXPECT_NE(outcome.output.find("Shutting down Registry..\n"), std::string::npos);

    VePNGFile image;
    image.Load((working / "shot.png").string());
    ASSERT_EQ(image.width, 640) << outcome.output;
    ASSERT_EQ(image.height, 640);
    int textPixels = 0;
    int strayPixels = 0;
    for (int32_t y = 0; y < image.height; ++y) {
        for (int32_t x = 0; x < image.width; ++x) {
            const uint32_t pixel = image.pixels[static_cast<size_t>(y * image.width + x)] & 0xFFFFFF;
            const bool inBand = y >= 5 && y < 45 && x >= 120 && x < 520;
            if (pixel == 0xFF0000 || pixel == 0x00FF00) {
                ++(inBand ? textPixels : strayPixels);
            }
        }
    }
    EXPECT_GT(textPixels, 100);
    EXPECT_EQ(strayPixels, 0);
}

TEST_F(ProgramRun, AnswersTheCommandLine) {
    const Outcome help = Run("--help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.output.find("--screenshot FILE"), std::string::npos) << help.output;

    const Outcome unknown = Run("--frames 5 --bogus");
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_NE(unknown.output.find("Unknown option '--bogus'"), std::string::npos) << unknown.output;
    EXPECT_EQ(unknown.output.find("App Fingerprint"), std::string::npos); // nothing was started

    const Outcome unwritable = Run("--frames 2 --screenshot '" + userData.path + "/missing/folder/shot.png'");
    EXPECT_EQ(unwritable.exitCode, 1) << unwritable.output;
}
