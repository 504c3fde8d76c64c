#pragma once

/// Memory that was given back to the allocator.
namespace spurkiste::speicher {

/// Gives it on to the system, page by page: what a large piece of work leaves behind would else stay with the program
/// until the same thread needs as much again. Takes milliseconds; where the C library has no way, nothing happens. Any
/// thread; others wait for memory meanwhile.
void gibZurueck();

}  // namespace spurkiste::speicher
