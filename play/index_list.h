#pragma once
// A small owning, doubly linked list of piece indices: a group's members, a tray's pieces.

class IndexNode {
public:
    explicit IndexNode(int v) : value(v), prev(nullptr), next(nullptr) {}
    virtual ~IndexNode() = default;

    int value;
    IndexNode* prev;
    IndexNode* next;
};

class IndexList {
public:
    IndexList();
    virtual ~IndexList();
    IndexList(const IndexList&) = delete;
    IndexList& operator=(const IndexList&) = delete;

    // Adds value at the tail; the cursor moves to the new node.
    void append(int value);
    // The same with a node made beforehand, which the list then owns: cannot fail.
    void append(IndexNode* node);
    // Removes the first node holding value; false when there is none. The cursor is left
    // alone.
    bool remove(int value);
    // Unlinks the first node holding value and hands it over; null when there is none.
    IndexNode* take(int value);
    IndexNode* takeFirst() { return head ? take(head->value) : nullptr; }
    // Writes the values head to tail into an array of at least count elements.
    void copyTo(int* array) const;
    void clear();

    int count;
    IndexNode* cursor;
    IndexNode* head;
    IndexNode* tail;
};
