#include "files/collection.h"

void openCollection(const char*)
{
}
