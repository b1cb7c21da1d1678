// The built program, run as a player or a script would run it: from a folder without the data,
// with the command line, in a window (the tests run under Xvfb), writing a screenshot.
#include "Screen/Surface/VePNGFile.h"
#include "Support/Screenshot.h"
#include "Support/TempUserData.h"

#include <X11/Xlib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <sys/wait.h>

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
        Outcome outcome;
        const int status = std::system(command.c_str());
        outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::ifstream file(log);
        std::stringstream text;
        text << file.rdbuf();
        outcome.output = text.str();
        return outcome;
    }

    // Runs ten frames with the frame-rate display and checks the screenshot: the text at the top
    // centre in the display's colours, and nowhere else. The game opens its one window once: no
    // other window is made at its size or shown.
    void CheckScreenshot(const std::string& extra) {
        const std::string shot = userData.path + "/shot.png";
        WindowWatch windows;
        const Outcome outcome = Run("--frames 10 --screenshot '" + shot + "' --fps " + extra);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.output;
        ASSERT_TRUE(windows.Watching());
        windows.Collect(640, 640);
        EXPECT_EQ(windows.madeAtSize, 1);
        EXPECT_EQ(windows.shown.size(), 1u);
        ASSERT_TRUE(fs::exists(shot)) << outcome.output;
        EXPECT_NE(outcome.output.find("Coordinator initialized.\n"), std::string::npos);
        EXPECT_NE(outcome.output.find("Shutting down Registry..\n"), std::string::npos);

        VePNGFile image;
        image.Load(shot);
        ASSERT_EQ(image.width, 640);
        ASSERT_EQ(image.height, 640);
        int textPixels = 0;
        int strayPixels = 0;
        for (int32_t y = 0; y < image.height; ++y) {
            for (int32_t x = 0; x < image.width; ++x) {
                const uint32_t pixel = image.pixels[static_cast<size_t>(y * image.width + x)] & 0xFFFFFF;
                if (pixel == 0) {
                    continue;
                }
                const bool inBand = y >= 5 && y < 45 && x >= 120 && x < 520;
                const bool textColour = pixel == 0xFF0000 || pixel == 0x00FF00;
                if (inBand && textColour) {
                    ++textPixels;
                } else if (!inBand && textColour) {
                    ++strayPixels;
                }
            }
        }
        EXPECT_GT(textPixels, 100);
        EXPECT_EQ(strayPixels, 0);
    }

    // A race on the first map of the shipped tours, steered right from the start, 240 frames on
    // the frame-locked clock: the picture is the same on every run. When the shipped first map or
    // its stored best run (the ghost) changes, look at the new pictures and store them with
    // QUILLMAZE_UPDATE_IMAGES=1.
    void CheckRace(const std::string& view) {
        const std::string shot = userData.path + "/race.png";
        const Outcome outcome =
            Run("--play 0 0 --" + view +
                " --autoplay 0:2 --fixed-dt 0.016667 --frames 240 --seed 1 --screenshot '" + shot + "'");
        ASSERT_EQ(outcome.exitCode, 0) << outcome.output;
        ScreenshotImage image;
        ASSERT_TRUE(LoadScreenshot(shot, image)) << outcome.output;
        EXPECT_TRUE(MatchesStoredImage("coordinator/race-" + view + ".png", image, 24, 640 * 640 / 100));
    }

    TempUserData userData;
    fs::path program;
    fs::path working;
};
} // namespace

TEST_F(ProgramRun, RacesThroughTheFirstMapIn3D) {
    CheckRace("3d");
}

TEST_F(ProgramRun, RacesThroughTheFirstMapIn2D) {
    CheckRace("2d");
}

TEST_F(ProgramRun, RefusesARaceOnAMapTheGameFolderDoesNotHave) {
    const Outcome missing = Run("--play 99 0 --2d --frames 5");
    EXPECT_EQ(missing.exitCode, 2) << missing.output;
    EXPECT_NE(missing.output.find("quillmaze: --play 99 0: the game folder has no tour 99"),
              std::string::npos)
        << missing.output;

    const Outcome unsteered = Run("--autoplay 0:2");
    EXPECT_EQ(unsteered.exitCode, 2) << unsteered.output;
    EXPECT_NE(unsteered.output.find("--autoplay steers a race: add --play TOUR MAP"), std::string::npos)
        << unsteered.output;
}

TEST_F(ProgramRun, ShowsTheFrameRateThroughOpenGL) {
    CheckScreenshot("");
}

TEST_F(ProgramRun, ShowsTheFrameRateWithoutOpenGL) {
    CheckScreenshot("--software --2d --fixed-dt 0.016"); // 2D asked for: no notice about OpenGL
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

    // A relative name is taken from the folder the program was started in, not its data folder.
    const Outcome relative = Run("--frames 2 --screenshot shots.png");
    EXPECT_EQ(relative.exitCode, 0) << relative.output;
    EXPECT_TRUE(fs::exists(working / "shots.png"));
}
