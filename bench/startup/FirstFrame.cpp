// Times a program from its launch to the first non-blank frame in its window, from outside the
// process, as a player sees it: watches the X server for the program's window to be shown, then
// reads the window's pixels every millisecond or so until any of them is not black.
//
//   startup-first-frame [--timeout MS] -- PROGRAM [ARGUMENTS...]
//
// Prints "first-frame MS" (milliseconds from the launch, with a tenth) and "windows N" (top-level
// windows shown), then ends the program. Exit status 0, or 1 when no frame came in time.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Whether any pixel of the window shows something other than black.
bool Drawn(Display* display, Window window) {
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, window, &attributes) == 0 || attributes.map_state != IsViewable) {
        return false;
    }
    XImage* image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                              static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (image == nullptr) {
        return false;
    }
    bool drawn = false;
    for (int y = 0; y < image->height && !drawn; y += 2) {
        for (int x = 0; x < image->width; x += 2) {
            if ((XGetPixel(image, x, y) & 0xFFFFFFu) != 0) {
                drawn = true;
                break;
            }
        }
    }
    XDestroyImage(image);
    return drawn;
}

int IgnoreErrors(Display*, XErrorEvent*) {
    return 0; // a window that went away between two requests
}

} // namespace

int main(int argc, char** argv) {
    double timeoutMs = 20000.0;
    int first = 1;
    for (; first < argc; ++first) {
        if (std::strcmp(argv[first], "--timeout") == 0 && first + 1 < argc) {
            timeoutMs = std::atof(argv[++first]);
        } else if (std::strcmp(argv[first], "--") == 0) {
            ++first;
            break;
        } else {
            break;
        }
    }
    if (first >= argc) {
        std::fprintf(stderr, "usage: %s [--timeout MS] -- PROGRAM [ARGUMENTS...]\n", argv[0]);
        return 2;
    }
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fprintf(stderr, "%s: no X display\n", argv[0]);
        return 2;
    }
    XSetErrorHandler(IgnoreErrors);
    const Window root = DefaultRootWindow(display);
    XSelectInput(display, root, SubstructureNotifyMask);
    XSync(display, True);

    const Clock::time_point start = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[first], argv + first);
        std::perror(argv[first]);
        _exit(127);
    }
    std::vector<Window> shown;
    double firstFrame = -1.0;
    bool ended = false;
    while (firstFrame < 0.0 && MsSince(start) < timeoutMs) {
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == MapNotify && event.xmap.event == root) {
                shown.push_back(event.xmap.window);
            }
        }
        for (Window window : shown) {
            if (Drawn(display, window)) {
                firstFrame = MsSince(start);
                break;
            }
        }
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) {
            ended = true;
            break;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(shown.empty() ? 200 : 1000));
    }
    if (!ended) {
        kill(child, SIGTERM);
        int status = 0;
        for (int i = 0; i < 200 && waitpid(child, &status, WNOHANG) == 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        if (waitpid(child, &status, WNOHANG) == 0) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
        }
    }
    XSync(display, False);
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == MapNotify && event.xmap.event == root) {
            shown.push_back(event.xmap.window);
        }
    }
    XCloseDisplay(display);
    if (firstFrame < 0.0) {
        std::printf("first-frame none\nwindows %zu\n", shown.size());
        return 1;
    }
    std::printf("first-frame %.1f\nwindows %zu\n", firstFrame, shown.size());
    return 0;
}
