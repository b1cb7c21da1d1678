#pragma once
// The game as the benchmarks run it, set up one way for all of them: the working folder at the
// source tree (where the game's assets lie), no dialogs, a user data folder of the benchmark's own
// (removed at the end), a quiet log, and the application made from a command line and started
// without frame pacing. The benchmark then drives it through the application's own frame.
//
// SIGTERM and SIGINT reach the game as the engine's quit request, as the window's close button
// does. Once one came, StopAsked is true: the benchmark ends its loop, and when the game object
// goes (the game stopped, the folder removed) the process ends there, so that no benchmark after
// it runs.
#include "Coordinator/VaApp.h"
#include "ShippedRuns.h"

#include <memory>
#include <string>
#include <vector>

class BenchGame {
public:
    enum class Sound { Off, On };
    // Off turns vertical synchronisation off, as the frame benchmarks need; AsSaved leaves the
    // option as the player's options file has it (the start-up measures the game's own start).
    enum class Vsync { Off, AsSaved };

    // The user data folder is named after the benchmark and the process.
    explicit BenchGame(const std::string& name);
    ~BenchGame();
    BenchGame(const BenchGame&) = delete;
    BenchGame& operator=(const BenchGame&) = delete;

    const std::string& Folder() const { return folder; }

    // Starts the game with the arguments that follow the program's name (a running game is
    // stopped first); false when the game refuses the command line or finds no window.
    bool Start(const std::vector<std::string>& arguments, Sound sound = Sound::Off, Vsync vsync = Vsync::Off);
    // The game in 2D on the fixed frame time, on the main menu, with more arguments after those.
    bool StartOnMainMenu(const std::vector<std::string>& more = {});
    // A race on the run's map in the view asked for, steered by the run, as
    // `quillmaze --play T M --2d|--3d --autoplay RUN --fixed-dt 0.016667` starts it; false when the
    // game has no window or does not reach the race.
    bool StartRace(const ShippedRun& run, bool threeD);
    // The next race in the running game on the run's map, as a player starts one after the last
    // (the view is the option the options page switches).
    bool RaceAgain(const ShippedRun& run, bool threeD);
    void Stop();

    bool StopAsked();

    // The running game, or null.
    VaApp* App() const { return app.get(); }

private:
    std::string name;
    std::string folder;
    std::unique_ptr<VaApp> app;
    bool stopAsked = false;
};
