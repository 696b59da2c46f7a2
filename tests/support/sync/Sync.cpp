// The tests' accounts outlive a program that is killed, not a machine that loses its power: SQLite's waiting for the
// disk, most of what an import into a file takes, is spared. The program `kovra` that tests start does wait.

extern "C" {

int fdatasync(int /*file*/) { return 0; }

int fsync(int /*file*/) { return 0; }

} // extern "C"
