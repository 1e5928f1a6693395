// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Part of thread sanitizer builds only. QProcess starts its children by a clone() that borrows the parent's
// memory until exec, as vfork() does. The sanitizer's own version of clone() takes the child for a forked one
// and clears what it knows of locks and threads, in memory that is still the parent's: from then on it
// reports races where locks are held. This one goes straight to the C library.

extern "C" int __clone(int (*function)(void *), void *stack, int flags, void *argument, ...);

extern "C" int plainClone(int (*function)(void *), void *stack, int flags, void *argument, void *parentId,
                          void *threadStorage, void *childId) asm("clone");

int plainClone(int (*function)(void *), void *stack, int flags, void *argument, void *parentId,
               void *threadStorage, void *childId)
{
    return __clone(function, stack, flags, argument, parentId, threadStorage, childId);
}
