#pragma once

#include <cstddef>

/// While alive, every allocation of `minimumSize` bytes or more fails with std::bad_alloc, as
/// on a machine out of memory, while small ones still succeed.
class FailingAllocation
{
public:
    explicit FailingAllocation(std::size_t minimumSize);
    ~FailingAllocation();
};
