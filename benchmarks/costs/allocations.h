#pragma once

/** How many blocks this process has taken from the heap; one that is resized counts again. */
long allocations();
