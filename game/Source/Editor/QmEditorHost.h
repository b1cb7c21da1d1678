#pragma once
// What the editor asks of the game around it: language lines and sounds, the front end's lists,
// and the scene changes (a race that returns to the editor, the menu, the tour page in its copy
// mode).
#include <string>

class QmEditorHost {
public:
    virtual ~QmEditorHost() = default;

    virtual std::string EditorLine(int number) = 0;
    virtual void EditorSound(const std::string& name, float volume) = 0;
    // The map was saved or renamed: lists that show maps read them again.
    virtual void MapListsChanged() = 0;
    // A race on the current (saved) map that comes back to the editor when it ends.
    virtual void PlayFromEditor() = 0;
    // Back to the menu; the world reloads the map as saved.
    virtual void LeaveEditor() = 0;
    // The tour page in its copy mode; false when it cannot be shown (the editor stays).
    virtual bool OpenCopyPage() = 0;
};
