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
    // Unlinks the first node holding value and hands it over; null when there is none.
    IndexNode* take(int value);
    IndexNode* takeFirst() { return head ? take(head->value) : nullptr; }
    void clear();

    int count;
    IndexNode* cursor;
    IndexNode* head;
    IndexNode* tail;
};
