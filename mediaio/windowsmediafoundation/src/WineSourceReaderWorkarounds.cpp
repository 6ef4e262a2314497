#include "WineSourceReaderWorkarounds.h"

#include <windows.h>
#include <winerror.h>
#include <wrl/client.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

// -1: ask the system; 0 or 1: a test's answer.
std::atomic<int> g_forcedWine{-1};

bool DetectWine() {
  const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  return ntdll && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// Creations given up on and still running, with what waits for them.
struct AbandonedCreations {
  std::mutex mutex;
  std::condition_variable changed;
  int count = 0;
};

AbandonedCreations& Abandoned() {
  // Never destroyed: a stuck creation may return after static destructors ran.
  static auto* abandoned = new AbandonedCreations;
  return *abandoned;
}

// Wine's GStreamer sources now and then deadlock when several are created at
// once, and every creation under way then stalls until its deadline; one at
// a time they do not. Never destroyed, like the count above.
std::timed_mutex& CreationTurn() {
  static auto* turn = new std::timed_mutex;
  return *turn;
}

// What the creating thread and the waiting caller share; whoever lets go
// last frees it.
struct Creation {
  std::function<HRESULT(IMFSourceReader**)> create;
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  bool abandoned = false;
  HRESULT result = E_FAIL;
  ComPtr<IMFSourceReader> reader;
  HMODULE module = nullptr;
};

void RunCreation(const std::shared_ptr<Creation>& creation) {
  ComPtr<IMFSourceReader> created;
  const HRESULT hr = creation->create(&created);
  std::lock_guard<std::mutex> lock(creation->mutex);
  creation->finished = true;
  creation->result = hr;
  if (creation->abandoned) {
    // Released here, while Media Foundation still runs: Terminate waits for this.
    created.Reset();
    AbandonedCreations& abandoned = Abandoned();
    std::lock_guard<std::mutex> countLock(abandoned.mutex);
    --abandoned.count;
    abandoned.changed.notify_all();
  } else {
    creation->reader = std::move(created);
  }
  creation->done.notify_one();
}

DWORD WINAPI CreationThread(void* parameter) {
  std::unique_ptr<std::shared_ptr<Creation>> owned(static_cast<std::shared_ptr<Creation>*>(parameter));
  const HMODULE module = (*owned)->module;
  RunCreation(*owned);
  owned.reset();
  // The thread's code lives in this module: it lets go of its own reference
  // to it last, so a host that unloads the module meanwhile is not hurt.
  if (module) FreeLibraryAndExitThread(module, 0);
  return 0;
}

// The module that holds this code, with a reference of its own.
HMODULE ReferenceThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<LPCWSTR>(&CreationThread), &module);
  return module;
}

}  // namespace

bool RunningUnderWine() {
  const int forced = g_forcedWine.load();
  if (forced >= 0) return forced == 1;
  static const bool underWine = DetectWine();
  return underWine;
}

ScopedWineDetectionForTesting::ScopedWineDetectionForTesting(bool underWine) {
  g_forcedWine = underWine ? 1 : 0;
}

ScopedWineDetectionForTesting::~ScopedWineDetectionForTesting() { g_forcedWine = -1; }

HRESULT CreateSourceReaderWithin(const std::function<HRESULT(IMFSourceReader**)>& create,
                                 IMFSourceReader** reader, std::chrono::milliseconds deadline) {
  if (!reader) return E_POINTER;
  *reader = nullptr;
  if (!RunningUnderWine()) return create(reader);

  // The wait for the turn counts against the deadline too. A creation given
  // up on gives the turn back, so a stuck one holds no other back.
  const auto until = std::chrono::steady_clock::now() + deadline;
  std::unique_lock<std::timed_mutex> turn(CreationTurn(), until);
  if (!turn.owns_lock()) return HRESULT_FROM_WIN32(ERROR_TIMEOUT);
  auto creation = std::make_shared<Creation>();
  creation->create = create;
  creation->module = ReferenceThisModule();
  auto* parameter = new std::shared_ptr<Creation>(creation);
  HANDLE thread = CreateThread(nullptr, 0, CreationThread, parameter, 0, nullptr);
  if (!thread) {
    delete parameter;
    if (creation->module) FreeLibrary(creation->module);
    return E_OUTOFMEMORY;
  }
  CloseHandle(thread);

  std::unique_lock<std::mutex> lock(creation->mutex);
  if (!creation->done.wait_until(lock, until, [&] { return creation->finished; })) {
    creation->abandoned = true;
    AbandonedCreations& abandoned = Abandoned();
    std::lock_guard<std::mutex> countLock(abandoned.mutex);
    ++abandoned.count;
    return HRESULT_FROM_WIN32(ERROR_TIMEOUT);
  }
  *reader = creation->reader.Detach();
  return creation->result;
}

bool WaitForAbandonedCreations(std::chrono::milliseconds timeout) {
  AbandonedCreations& abandoned = Abandoned();
  std::unique_lock<std::mutex> lock(abandoned.mutex);
  return abandoned.changed.wait_for(lock, timeout, [&] { return abandoned.count == 0; });
}

void SourceRestartGuard::SettleBeforeRelease(IMFSourceReader* reader, DWORD stream) {
  if (reader && restartPending_ && RunningUnderWine()) {
    DWORD flags = 0;
    ComPtr<IMFSample> sample;
    reader->ReadSample(stream, 0, nullptr, &flags, nullptr, &sample);
  }
  restartPending_ = false;
}

bool SourceRestartGuard::RewindsWithoutStreams() { return !RunningUnderWine(); }

}  // namespace windowsmediafoundation
