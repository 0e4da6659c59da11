#include "ClusterMemory.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

// Every allocation of the program goes through here. What malloc really set aside is counted, which is a
// little more than was asked for.

namespace {

std::size_t inUse = 0;

}  // namespace

std::size_t bytesInUse() noexcept {
    return inUse;
}

void* operator new(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    inUse += malloc_usable_size(memory);
    return memory;
}

void operator delete(void* memory) noexcept {
    inUse -= malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
