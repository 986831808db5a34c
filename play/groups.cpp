// Joining: setting dropped items at their correct place, snapping them to true neighbours,
// and the group list.
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "model/gdi_objects.h"
#include "model/puzzle.h"
#include "play/piece_group.h"

int Puzzle::createGroup(int id, int trayId)
{
    return linkGroup(new PieceGroup, id, trayId);
}

int Puzzle::linkGroup(PieceGroup* group, int id, int trayId)
{
    if (id == 0) {
        group->id = ++lastGroupId;
    } else {
        group->id = id;
        lastGroupId = std::max(lastGroupId, id);
    }
    group->trayId = trayId;
    group->prev = lastGroup;
    if (lastGroup)
        lastGroup->next = group;
    else
        firstGroup = group;
    lastGroup = group;
    currentGroup = group;
    ++groupCount;
    return group->id;
}

bool Puzzle::findGroup(int id, bool moveCursor)
{
    PieceGroup* found = nullptr;
    if (groupCount != 0) {
        if (currentGroup && currentGroup->id == id)
            found = currentGroup;
        for (PieceGroup* group = firstGroup; group && !found; group = group->next) {
            if (group->id == id)
                found = group;
        }
    }
    if (found && moveCursor)
        currentGroup = found;
    else
        foundGroup = found;
    return found != nullptr;
}

bool Puzzle::deleteGroup(int id)
{
    if (!findGroup(id, false))
        return false;
    PieceGroup* group = foundGroup;
    if (group->prev)
        group->prev->next = group->next;
    else
        firstGroup = group->next;
    if (group->next)
        group->next->prev = group->prev;
    else
        lastGroup = group->prev;
    if (currentGroup == group)
        currentGroup = nullptr;  // the next lookup starts at the head
    foundGroup = group->next ? group->next : group->prev;
    delete group;
    --groupCount;
    return true;
}

void Puzzle::addToGroup(int groupId, const int* members, int count)
{
    if (!findGroup(groupId, true))
        return;
    PieceGroup& group = *currentGroup;
    for (int i = 0; i < count; ++i)
        addMember(group, new IndexNode(members[i]));
}

void Puzzle::addMember(PieceGroup& group, IndexNode* node)
{
    Piece& piece = pieces[node->value];
    if (piece.groupId == group.id) {
        delete node;
        return;
    }
    group.members.append(node);
    piece.groupId = group.id;
    piece.isGrouped = true;
    const RECT box = piece.getBounds(true, false, false);
    if (group.trayId == 0)
        group.trayId = piece.trayId;
    const bool first = group.members.count == 1;

    RECT united;
    UnionRect(&united, &group.bounds, &box);
    if (first || piece.sourceX < group.sourceX)
        group.sourceX = piece.sourceX;
    if (first || piece.sourceY < group.sourceY)
        group.sourceY = piece.sourceY;
    if (first || piece.homeX < group.homeX)
        group.homeX = piece.homeX;
    if (first || piece.homeY < group.homeY)
        group.homeY = piece.homeY;

    // The region's origin is the group's top-left, which moves when the union grows to the
    // left or upwards.
    int mode = RGN_COPY;
    if (!first) {
        mode = RGN_OR;
        OffsetRgn(group.region, std::max(0L, group.x - united.left),
                  std::max(0L, group.y - united.top));
    }
    group.bounds = united;
    group.x = united.left;
    group.y = united.top;
    group.width = united.right - united.left;
    group.height = united.bottom - united.top;

    // The piece's outline is moved into the group's frame and back, so that a join makes no
    // region of its own.
    OffsetRgn(piece.region, piece.x - united.left, piece.y - united.top);
    CombineRgn(group.region, piece.region, group.region, mode);
    OffsetRgn(piece.region, united.left - piece.x, united.top - piece.y);
}

bool Puzzle::findJoin(int p, int& neighbour, int& targetX, int& targetY) const
{
    const Piece& piece = pieces[p];
    const RECT a = piece.getBounds(true, true, false);
    const int tabLeft = piece.knobLeft == Out ? 2 * piece.knobSize : 0;
    const int tabTop = piece.knobTop == Out ? 2 * piece.knobSize : 0;
    const int tabRight = piece.knobRight == Out ? 2 * piece.knobSize : 0;
    const int tabBottom = piece.knobBottom == Out ? 2 * piece.knobSize : 0;
    auto within = [](LONG u, LONG v) { return std::abs(u - v) <= joinTolerance; };

    const int order[] = {piece.neighbourUp, piece.neighbourDown, piece.neighbourLeft,
                         piece.neighbourRight};
    for (int side = 0; side < 4; ++side) {
        const int n = order[side];
        if (n < 0)
            continue;
        const Piece& other = pieces[n];
        // A set piece lies in puzzle coordinates and belongs to no group; a piece that meets
        // it at the right offset is near its own home and is set, not joined.
        if (other.isSet || other.trayId != piece.trayId)
            continue;
        if (piece.groupId != 0 && piece.groupId == other.groupId)
            continue;
        const RECT b = other.getBounds(true, true, false);
        bool touching = false;
        switch (side) {
        case 0:  // up
            touching = within(a.top, b.bottom) && within(a.left, b.left);
            targetX = b.left - tabLeft;
            targetY = b.bottom - tabTop;
            break;
        case 1:  // down
            touching = within(b.top, a.bottom) && within(a.left, b.left);
            targetX = b.left - tabLeft;
            targetY = b.top - piece.height + tabBottom;
            break;
        case 2:  // left
            touching = within(a.top, b.top) && within(a.left, b.right);
            targetX = b.right - tabLeft;
            targetY = b.top - tabTop;
            break;
        default:  // right
            touching = within(a.top, b.top) && within(b.left, a.right);
            targetX = b.left - piece.width + tabRight;
            targetY = b.top - tabTop;
            break;
        }
        if (touching) {
            neighbour = n;
            return true;
        }
    }
    return false;
}

bool Puzzle::setIfNearHome(int p)
{
    Piece& piece = pieces[p];
    if (piece.window != mainWindow)
        return false;

    PieceGroup* group = nullptr;
    RECT area = piece.getBounds(true, false, false);
    if (piece.isGrouped) {
        if (!findGroup(piece.groupId, true))
            return false;
        group = currentGroup;
        area = group->bounds;
    }

    bool nearHome = false;
    forEachMember(p, group, [&](int m) {
        nearHome = nearHome || pieces[m].isNearHome(pieces[m].x + scrollX, pieces[m].y + scrollY);
    });
    if (!nearHome)
        return false;

    const int homeLeft = group ? group->homeX : piece.homeX;
    const int homeTop = group ? group->homeY : piece.homeY;
    moveItem(p, grabOffsetX + homeLeft, grabOffsetY + homeTop, false, true, true, true);

    forEachMember(p, group, [&](int m) {
        pieces[m].markSet();
        pieces[m].isGrouped = false;
        pieces[m].groupId = 0;
    });
    if (group)
        deleteGroup(group->id);

    // Newly set pieces and their neighbours follow the set-piece frame rules.
    if (drawOutline != drawSetOutline || (group && drawSetOutline)) {
        InflateRect(&area, joinTolerance, joinTolerance);
        repaintRect(area, piece.trayId, piece.window);
    }
    return true;
}

// Everything a join needs is had before anything moves, so that a join either happens
// whole or, short of memory, not at all.
bool Puzzle::joinNeighbours(int p)
{
    Piece& piece = pieces[p];
    bool joined = false;
    int n = -1, tx = 0, ty = 0;
    if (!piece.isGrouped) {
        if (!findJoin(p, n, tx, ty))
            return false;
        std::unique_ptr<IndexNode> dropped(new IndexNode(p));
        std::unique_ptr<IndexNode> resting;
        std::unique_ptr<PieceGroup> pair;
        if (pieces[n].groupId == 0) {
            resting.reset(new IndexNode(n));
            pair.reset(new PieceGroup);
        }
        moveItem(p, grabOffsetX + tx, grabOffsetY + ty, false, true, false, true);
        if (pair) {
            linkGroup(pair.release(), 0, 0);
            addMember(*currentGroup, dropped.release());
            addMember(*currentGroup, resting.release());
        } else if (findGroup(pieces[n].groupId, true)) {
            addMember(*currentGroup, dropped.release());
        }
        joined = true;
    } else {
        if (!findGroup(piece.groupId, true))
            return false;
        PieceGroup* group = currentGroup;
        // At most one join per drop: the first member, in joining order, that finds a match.
        for (IndexNode* node = group->members.head; node && !joined; node = node->next) {
            const int m = node->value;
            if (!findJoin(m, n, tx, ty))
                continue;
            const int gx = tx + group->x - pieces[m].x;
            const int gy = ty + group->y - pieces[m].y;
            Piece& other = pieces[n];
            if (other.isGrouped) {
                if (!findGroup(other.groupId, false))
                    continue;
                PieceGroup* absorbed = foundGroup;
                moveItem(p, grabOffsetX + gx, grabOffsetY + gy, false, true, false, true);
                // The resting group's pieces join the dropped group and keep their places;
                // their nodes move over, so nothing is allocated.
                while (IndexNode* member = absorbed->members.takeFirst())
                    addMember(*group, member);
                deleteGroup(absorbed->id);
            } else {
                std::unique_ptr<IndexNode> resting(new IndexNode(n));
                moveItem(p, grabOffsetX + gx, grabOffsetY + gy, false, true, false, true);
                addMember(*group, resting.release());
            }
            joined = true;
        }
    }

    if (joined && drawOutline && findGroup(piece.groupId, false)) {
        RECT area = foundGroup->bounds;
        InflateRect(&area, joinTolerance, joinTolerance);
        repaintRect(area, piece.trayId, piece.window);
    }
    return joined;
}
