#pragma once
// The program's command line. Options take the forms "--name", "--name value" and "--name=value":
//   --frames N         quit after N frames
//   --screenshot FILE  write the last presented frame as a PNG before quitting
//   --software         present without OpenGL
//   --fixed-dt S       every frame lasts S seconds
//   --fps              show the frame-rate display from the start
//   --help             print the usage and quit
// Anything else is an error with a message naming it. New options are added to the table built
// in the constructor.
#include <cstdint>
#include <functional>
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

    int64_t frames = 0; // 0: no limit
    std::string screenshot;
    bool software = false;
    float fixedDelta = 0.0f; // 0: measured
    bool fps = false;

private:
    struct Option {
        std::string name;      // without the leading "--"
        std::string valueName; // empty for a switch
        std::string help;
        // Stores the value; returns an error text, empty when the value was good.
        std::function<std::string(const std::string& value)> apply;
    };

    void AddSwitch(const std::string& name, const std::string& help, std::function<void()> apply);
    void AddValue(const std::string& name, const std::string& valueName, const std::string& help,
                  std::function<std::string(const std::string& value)> apply);
    void Reset();

    std::vector<Option> options;
    std::string error;
    bool helpAsked = false;
};
