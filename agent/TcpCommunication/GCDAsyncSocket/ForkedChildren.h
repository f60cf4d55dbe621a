// ForkedChildren: keeps sockets from the children that the program forks.
//
// A child that becomes another program loses them by itself (close-on-exec). One that goes on as it
// is, like a worker of an interpreter's process pool, would hold ports and connections for as long
// as it lives, beyond the program's own end. So it finds sockets that lead nowhere in their places:
// open ones, since a number that were free could be given to a file of the child's.
#pragma once

namespace tarni::ForkedChildren {

// From now on, and until the descriptor is about to be closed. Any thread. Of more than 64 at once
// the rest is inherited.
void keepFrom(int descriptor);
void leaveTo(int descriptor);

}  // namespace tarni::ForkedChildren
