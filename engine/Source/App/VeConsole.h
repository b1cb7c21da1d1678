#pragma once
// The process console. A program started from a desktop has no console of its own elsewhere;
// here the standard streams always exist (a terminal, a pipe or /dev/null), so the console binds
// them as they are: it clears the error state of the six standard streams (narrow and wide input,
// output and error) and flushes them when released.
class VeConsole {
public:
    VeConsole();
    ~VeConsole();
    VeConsole(const VeConsole&) = delete;
    VeConsole& operator=(const VeConsole&) = delete;
};
