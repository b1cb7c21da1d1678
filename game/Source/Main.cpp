// The program's entry: reads the command line, finds the data folder, then runs the game's
// application object: the arguments are stored, the engine settings filled, and the application
// run (start-up, the main loop, shutdown) before it is destroyed. Exit status: 0, 1 when the
// asked-for screenshot could not be written or the data is missing, 2 for a command line (or a
// race it asks for) that cannot be run.
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/QmDataFolder.h"
#include "Coordinator/VaApp.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv, argv + argc);
    const std::string program = "quillmaze";

    QmCommandLine commandLine;
    switch (commandLine.Parse(arguments)) {
    case QmCommandLine::Result::Help:
        std::fputs(commandLine.Usage(program).c_str(), stdout);
        return 0;
    case QmCommandLine::Result::Error:
        std::fprintf(stderr, "%s: %s.\nTry '%s --help' for the options.\n", program.c_str(),
                     commandLine.Error().c_str(), program.c_str());
        return 2;
    case QmCommandLine::Result::Run:
        break;
    }
    // The screenshot's name is taken from where the program was started, before it moves to its data.
    if (!commandLine.screenshot.empty()) {
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(commandLine.screenshot, error);
        if (!error) {
            commandLine.screenshot = absolute.string();
        }
    }
    if (!QmDataFolder::Enter(arguments.empty() ? std::string() : arguments[0])) {
        std::fprintf(stderr,
                     "%s: the game's data (the folder \"Assets\") is neither in the working folder nor "
                     "beside the program.\n",
                     program.c_str());
        return 1;
    }

    VaApp* app = new VaApp();
    app->arguments = arguments;
    app->FillSettings();
    app->UseCommandLine(commandLine);
    app->SetQuickStart(true);
    app->Run();
    const int exitCode = app->ExitCode();
    delete app;
    return exitCode;
}
