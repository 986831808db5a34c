#include "play/index_list.h"

IndexList::IndexList() : count(0), cursor(nullptr), head(nullptr), tail(nullptr) {}

IndexList::~IndexList()
{
    clear();
}

void IndexList::append(int value)
{
    append(new IndexNode(value));
}

void IndexList::append(IndexNode* node)
{
    node->prev = tail;
    node->next = nullptr;
    if (tail)
        tail->next = node;
    else
        head = node;
    tail = node;
    cursor = node;
    ++count;
}

IndexNode* IndexList::take(int value)
{
    for (IndexNode* node = head; node; node = node->next) {
        if (node->value != value)
            continue;
        if (node->prev)
            node->prev->next = node->next;
        else
            head = node->next;
        if (node->next)
            node->next->prev = node->prev;
        else
            tail = node->prev;
        if (cursor == node)
            cursor = nullptr;  // never leave the cursor on a node that left
        node->prev = node->next = nullptr;
        --count;
        return node;
    }
    return nullptr;
}

void IndexList::clear()
{
    while (head) {
        IndexNode* next = head->next;
        delete head;
        head = next;
    }
    tail = cursor = nullptr;
    count = 0;
}
