#pragma once
// What the editor asks of the game around it: language lines and sounds, the front end's lists,
// the notice dialog for its questions, and the scene changes (a race that returns to the editor,
// the menu, the tour page in its copy mode).
#include <string>

class QmEditorHost {
public:
    virtual ~QmEditorHost() = default;

    virtual std::string EditorLine(int number) = 0;
    virtual void EditorSound(const std::string& name, float volume) = 0;
    // The map was saved, renamed or copied into: lists that show maps read them again.
    virtual void MapListsChanged() = 0;
    // A race on the current (saved) map that comes back to the editor when it ends.
    virtual void PlayFromEditor() = 0;
    // Back to the menu; the world reloads the map as saved.
    virtual void LeaveEditor() = 0;
    // The tour page in its copy mode; false when it cannot be shown (the editor stays).
    virtual bool OpenCopyPage() = 0;

    // The notice dialog. AskEditorQuestion opens it with No and Yes, carrying action; while it is
    // open (a question or any other notice) the editor leaves it the keys, the pad and the mouse,
    // and EditorDialogFrame draws it over the overlay and reads its buttons once per frame.
    // EditorQuestionConfirmed tells whether the last frame closed it with Yes while it carried
    // action; CloseEditorDialog hides it.
    virtual void AskEditorQuestion(const std::string& action, const std::string& title,
                                   const std::string& text) = 0;
    virtual bool EditorDialogOpen() const = 0;
    virtual void EditorDialogFrame() = 0;
    virtual bool EditorQuestionConfirmed(const std::string& action) const = 0;
    virtual void CloseEditorDialog() = 0;
};
