#pragma once
// Pieces joined together: dragged, drawn, set and handed between windows as one item.
#include <windows.h>

#include "play/index_list.h"

// Two edges touch when they are at most this many pixels apart on both axes.
constexpr int joinTolerance = 4;

class PieceGroup {
public:
    PieceGroup();
    virtual ~PieceGroup();
    PieceGroup(const PieceGroup&) = delete;
    PieceGroup& operator=(const PieceGroup&) = delete;

    void setPosition(int newX, int newY);

    int id;
    RECT bounds;  // union of the members' bounding boxes, window coordinates
    HRGN region;  // union of the members' outlines, origin at the bounds' top-left
    int x, y;     // always bounds.left, bounds.top
    int width, height;
    int sourceX, sourceY;  // where the group's picture begins in the rendered picture
    int homeX, homeY;      // the group's correct top-left, puzzle coordinates
    int trayId;
    IndexList members;  // in the order they joined
    PieceGroup* prev;
    PieceGroup* next;
};

// Calls visit with every member of group in joining order, or with p alone when there is no
// group.
template <class Visit> void forEachMember(int p, const PieceGroup* group, Visit visit)
{
    if (!group) {
        visit(p);
        return;
    }
    for (const IndexNode* node = group->members.head; node; node = node->next)
        visit(node->value);
}
