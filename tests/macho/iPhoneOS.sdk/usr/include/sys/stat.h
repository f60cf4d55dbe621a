#pragma once
#include <sys/types.h>
#include <time.h>
struct stat {
  dev_t st_dev;
  mode_t st_mode;
  nlink_t st_nlink;
  ino_t st_ino;
  uid_t st_uid;
  gid_t st_gid;
  dev_t st_rdev;
  struct timespec st_atimespec, st_mtimespec, st_ctimespec, st_birthtimespec;
  off_t st_size;
  int64_t st_blocks;
  int32_t st_blksize;
  uint32_t st_flags, st_gen;
  int32_t st_lspare;
  int64_t st_qspare[2];
};
#define S_IRWXU 0000700
#define S_IRUSR 0000400
#define S_IWUSR 0000200
#define S_IRWXG 0000070
#define S_IRWXO 0000007
#define S_ISDIR(mode) (((mode)&0170000) == 0040000)
#define S_ISSOCK(mode) (((mode)&0170000) == 0140000)
#ifdef __x86_64__  // which had another structure once, with short inode numbers
#define INODE64(name) __asm("_" #name "$INODE64")
#else
#define INODE64(name)
#endif
__BEGIN_DECLS
int fstat(int, struct stat*) INODE64(fstat);
int lstat(const char*, struct stat*) INODE64(lstat);
int stat(const char*, struct stat*) INODE64(stat);
int chmod(const char*, mode_t);
int mkdir(const char*, mode_t);
__END_DECLS
