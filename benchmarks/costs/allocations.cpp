#include "allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

static std::atomic<long> count{0};

long allocations()
{
    return count;
}

#pragma GCC visibility push(default)
extern "C" {

void *__libc_malloc(size_t size);
void *__libc_calloc(size_t number, size_t size);
void *__libc_realloc(void *block, size_t size);
void *__libc_memalign(size_t alignment, size_t size);

// Found before those of the C library, by every library of the process; new calls malloc().

void *malloc(size_t size)
{
    ++count;
    return __libc_malloc(size);
}

void *calloc(size_t number, size_t size)
{
    ++count;
    return __libc_calloc(number, size);
}

void *realloc(void *block, size_t size)
{
    ++count;
    return __libc_realloc(block, size);
}

void *memalign(size_t alignment, size_t size)
{
    ++count;
    return __libc_memalign(alignment, size);
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void **block, size_t alignment, size_t size)
{
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}
}
#pragma GCC visibility pop
