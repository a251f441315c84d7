// store/published.h -- the store's structure for a thread that reads it while the window thread
// edits: a list of the point arrays that stands apart from the store's own. No lock: before a
// point array is released the list is withdrawn, and what a reader may still hold is kept until
// it has left. A reader that finds no list does without, until the edit is over.
#pragma once

#include "store/store.h"

#include <cstdint>

/// One partial; the points' fields are read and written through live/shared.h.
struct PublishedPartial {
    Breakpoint *points;
    int32_t count;
};

/// The partials in their order.
struct PublishedStore {
    int32_t count;
    const PublishedPartial *partials;
};

/// While one lives, nothing that it leads to is released. Any thread; never waits.
class StoreReader {
  public:
    StoreReader();
    ~StoreReader();
    StoreReader(const StoreReader &) = delete;
    StoreReader &operator=(const StoreReader &) = delete;

    /// Null while an edit is under way.
    const PublishedStore *store() const {
        return store_;
    }

  private:
    const PublishedStore *store_;
};

// Window thread.

/// Shows the store as it is now to readers that come from here on. The list withdrawn last
/// serves again where the structure has not changed.
void publish_store();

/// True from publish_store until the list is withdrawn.
bool store_is_published();

/// Withdraws the list. True when no reader is inside any more; then none can reach a point array
/// until the next publication.
bool withdraw_store();

/// Releases memory from malloc that readers may have reached, at once or when they have left.
void retire(void *memory);

/// How many blocks wait for readers to leave.
int32_t retired_blocks();

/// While one lives, the window thread alone has the points: the list is withdrawn, and readers
/// that came before have left, but for one that stays a quarter of a second. They nest; the end of
/// the outermost shows the store again if it was shown before.
class StoreEdit {
  public:
    StoreEdit();
    ~StoreEdit();
    StoreEdit(const StoreEdit &) = delete;
    StoreEdit &operator=(const StoreEdit &) = delete;
};

/// A wait for the user within an edit: until it ends, readers have the store back if its
/// structure has not changed yet. Without an edit it does nothing.
class StoreEditPause {
  public:
    StoreEditPause();
    ~StoreEditPause();
    StoreEditPause(const StoreEditPause &) = delete;
    StoreEditPause &operator=(const StoreEditPause &) = delete;

  private:
    bool shown_;
};
