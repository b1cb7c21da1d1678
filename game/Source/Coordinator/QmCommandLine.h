#pragma once
// The program's command line. Options take the forms "--name", "--name value" and "--name=value"
// (options with two values only the second form: "--play 0 3"):
//   --frames N           quit after N frames
//   --screenshot FILE    write the last presented frame as a PNG before quitting
//   --software           present without OpenGL
//   --fixed-dt S         every frame lasts S seconds, and the game's clock moves by S a frame
//   --seed N             start the random generator from N instead of the time
//   --fps                show the frame-rate display from the start
//   --play TOUR MAP      race on map MAP of tour TOUR of the game folder (both from 0)
//   --edit TOUR MAP      open the map editor on that map instead
//   --2d, --3d           show the world in 2D or 3D for this run (the stored option is kept)
//   --autoplay INPUTS    steer the racer with a recording ("0:2;812:0", as score files keep runs)
//   --help               print the usage and quit
// Anything else is an error with a message naming it. New options are added to the table built
// in the constructor.
#include "Gameplay/QmRecording.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QmCommandLine {
public:
    enum class Result { Run, Help, Error };

    QmCommandLine();

    // arguments[0] is the program; the rest are parsed in order. Parsing again starts from the
    // defaults.
    Result Parse(const std::vector<std::string>& arguments);
    // Why the last Parse failed.
    const std::string& Error() const { return error; }
    // The usage text: one line per option.
    std::string Usage(const std::string& program) const;
    // A race was asked for.
    bool Plays() const { return playTour >= 0; }
    // The editor was asked for.
    bool Edits() const { return editTour >= 0; }

    int64_t frames = 0; // 0: no limit
    std::string screenshot;
    bool software = false;
    float fixedDelta = 0.0f; // 0: measured
    std::optional<uint32_t> seed;
    bool fps = false;
    int32_t playTour = -1; // -1: no race asked for
    int32_t playMap = -1;
    int32_t editTour = -1; // -1: no editor asked for
    int32_t editMap = -1;
    std::optional<bool> threeD; // the "3DGraphics" of this run, when asked for
    std::optional<QmRecording> autoplay;
    std::string service; // the online service's address; empty: QUILLMAZE_SERVICE or the default

private:
    struct Option {
        std::string name;                    // without the leading "--"
        std::vector<std::string> valueNames; // empty for a switch
        std::string help;
        // Stores the values; returns an error text, empty when they were good.
        std::function<std::string(const std::vector<std::string>& values)> apply;
    };

    void AddSwitch(const std::string& name, const std::string& help, std::function<std::string()> apply);
    void AddValue(const std::string& name, const std::string& valueName, const std::string& help,
                  std::function<std::string(const std::string& value)> apply);
    void AddValues(const std::string& name, std::vector<std::string> valueNames, const std::string& help,
                   std::function<std::string(const std::vector<std::string>& values)> apply);
    void Reset();
    // What the options say together (after every one was read); empty when they agree.
    std::string CheckTogether() const;

    std::vector<Option> options;
    std::string error;
    bool helpAsked = false;
};
