#pragma once
#include <sched.h>
#include <time.h>

typedef struct pthread* pthread_t;
typedef unsigned long pthread_key_t;

// As large as there; empty, since what is built here never runs.
typedef struct {
  long words[8];
} pthread_mutex_t, pthread_attr_t;
typedef struct {
  long words[6];
} pthread_cond_t;
typedef struct {
  long words[2];
} pthread_once_t, pthread_mutexattr_t;

#define PTHREAD_MUTEX_INITIALIZER \
  {                               \
    { 0 }                         \
  }
#define PTHREAD_COND_INITIALIZER \
  {                              \
    { 0 }                        \
  }
#define PTHREAD_ONCE_INIT \
  {                       \
    { 0 }                 \
  }
#define PTHREAD_MUTEX_RECURSIVE 2

__BEGIN_DECLS
int pthread_atfork(void (*)(void), void (*)(void), void (*)(void));
int pthread_cancel(pthread_t);
int pthread_cond_broadcast(pthread_cond_t*);
int pthread_cond_destroy(pthread_cond_t*);
int pthread_cond_signal(pthread_cond_t*);
int pthread_cond_timedwait(pthread_cond_t*, pthread_mutex_t*, const struct timespec*);
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t*);
int pthread_atfork(void (*)(void), void (*)(void), void (*)(void));
int pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
int pthread_detach(pthread_t);
int pthread_equal(pthread_t, pthread_t);
void* pthread_getspecific(pthread_key_t);
void pthread_exit(void*) __attribute__((noreturn));
int pthread_join(pthread_t, void**);
int pthread_key_create(pthread_key_t*, void (*)(void*));
int pthread_main_np(void);
int pthread_mutex_destroy(pthread_mutex_t*);
int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*);
int pthread_mutex_lock(pthread_mutex_t*);
int pthread_mutex_trylock(pthread_mutex_t*);
int pthread_mutex_unlock(pthread_mutex_t*);
int pthread_mutexattr_destroy(pthread_mutexattr_t*);
int pthread_mutexattr_init(pthread_mutexattr_t*);
int pthread_mutexattr_settype(pthread_mutexattr_t*, int);
int pthread_once(pthread_once_t*, void (*)(void));
pthread_t pthread_self(void);
int pthread_setspecific(pthread_key_t, const void*);
__END_DECLS
