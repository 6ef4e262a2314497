// Wine's Media Foundation has defects that Windows does not, and the module
// is tested under Wine. Everything here works around them and is inert
// unless the module runs under Wine (detected at run time); on Windows the
// reader is created, rewound and released exactly as the platform expects.
#pragma once

#include <mfidl.h>
#include <mfreadwrite.h>

#include <chrono>
#include <functional>

namespace windowsmediafoundation {

// True when ntdll exports wine_get_version, asked once per process.
bool RunningUnderWine();

// Makes RunningUnderWine answer `underWine` until destroyed, so both
// behaviours can be tested on one platform.
class ScopedWineDetectionForTesting {
 public:
  explicit ScopedWineDetectionForTesting(bool underWine);
  ~ScopedWineDetectionForTesting();
  ScopedWineDetectionForTesting(const ScopedWineDetectionForTesting&) = delete;
  ScopedWineDetectionForTesting& operator=(const ScopedWineDetectionForTesting&) = delete;
};

// A creation Wine's GStreamer sources may never finish, on damaged files.
constexpr std::chrono::milliseconds kWineCreationDeadline{30000};
// How long the thread that runs creations under Wine waits for the next one
// before it ends.
constexpr std::chrono::milliseconds kWineCreationWorkerIdle{2000};

// Runs `create`. On Windows it runs on the calling thread. Under Wine it runs
// on a worker thread, one creation at a time, and is given up after
// `deadline` (the wait for its turn included) with
// HRESULT_FROM_WIN32(ERROR_TIMEOUT); a creation given up on is counted until
// it returns. The worker keeps the module loaded until it ends: when idle
// for kWineCreationWorkerIdle, or once a creation given up on has returned.
HRESULT CreateSourceReaderWithin(const std::function<HRESULT(IMFSourceReader**)>& create,
                                 IMFSourceReader** reader,
                                 std::chrono::milliseconds deadline = kWineCreationDeadline);

// Waits up to `timeout` for creations that were given up to return. True when
// none is left inside Media Foundation, so the platform may be shut down.
bool WaitForAbandonedCreations(std::chrono::milliseconds timeout);

// Wine's media source crashes when it is released while it restarts after a
// seek, and every open ends with one. One read waits for the restart; it
// costs a decoded buffer, and only when nothing was read since the seek.
class SourceRestartGuard {
 public:
  void NoteSeek() { restartPending_ = true; }
  void NoteRead() { restartPending_ = false; }
  // Reads once from `stream` when a restart is pending under Wine.
  void SettleBeforeRelease(IMFSourceReader* reader, DWORD stream);

  // Wine's source also crashes when released after a rewind with no stream
  // selected, so under Wine a reader without streams is not rewound.
  static bool RewindsWithoutStreams();

 private:
  bool restartPending_ = false;
};

}  // namespace windowsmediafoundation
