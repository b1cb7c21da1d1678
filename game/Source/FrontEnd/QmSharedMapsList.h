#pragma once
// The list of the shared-maps page: one column of rows under a heading, each row a name with up
// to two texts beside it (a count, a size, a slot). Up and Down move the selection, the list
// scrolls to keep it in sight, the mouse picks a row by pointing at it. An empty list shows a note.
#include "FrontEnd/QmTextBox.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <memory>
#include <string>
#include <vector>

class VeSurface;

class QmSharedMapsList {
public:
    struct Row {
        std::string first;
        std::string second;
        std::string third;
    };
    static constexpr int kX = 16;
    static constexpr int kWidth = 608;
    static constexpr int kHeadingY = 72;
    static constexpr int kRowsY = 98;
    static constexpr int kRowHeight = 36;
    static constexpr int kVisibleRows = 9;
    // Where the second and third texts and their headings begin, from the list's left edge.
    static constexpr int kSecondX = 380;
    static constexpr int kThirdX = 500;

    QmSharedMapsList();

    // New rows and headings; the selection stays where it still exists.
    void Set(const std::vector<std::string>& headings, const std::vector<Row>& rows,
             const std::string& empty);
    int Selected() const { return selected; }
    void Select(int index);
    size_t Size() const { return rows.size(); }
    // Moves the selection; false at either end (the selection stays).
    bool Move(int step);
    // The row under the point, or -1.
    int RowAt(int x, int y) const;
    void Draw(VeSurface& target, bool focused) const;
    QmTextBoxes Texts() const;

private:
    struct Texts3 {
        std::unique_ptr<VeText> first, second, third;
    };
    void Scroll();

    VeTextStyle headingStyle;
    VeTextStyle rowStyle;
    VeTextStyle noteStyle;
    std::vector<std::unique_ptr<VeText>> headings;
    std::vector<Texts3> rows;
    VeText emptyNote;
    int selected = 0;
    int top = 0;
};
