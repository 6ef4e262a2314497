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

// Starting a thread costs Wine about 2 ms, a quarter of a small file's whole
// open, so one thread runs creation after creation. It ends once idle for
// kWineCreationWorkerIdle, or after a creation that was given up on; the
// next creation then starts another.

// A thread that runs the creations handed to it, one after the other.
struct CreationWorker {
  std::mutex mutex;
  std::condition_variable wake;
  std::shared_ptr<Creation> next;  // handed over, not yet taken
};

// Where the next creation goes: null when no worker serves.
struct Workers {
  std::mutex mutex;  // taken before a worker's own
  std::shared_ptr<CreationWorker> current;
};

Workers& TheWorkers() {
  // Never destroyed: an idle worker may outlive static destructors.
  static auto* workers = new Workers;
  return *workers;
}

// The next creation handed to `worker`, or null once it was idle for
// kWineCreationWorkerIdle; nothing is handed to it after that.
std::shared_ptr<Creation> NextCreation(const std::shared_ptr<CreationWorker>& worker) {
  {
    std::unique_lock<std::mutex> lock(worker->mutex);
    if (worker->wake.wait_for(lock, kWineCreationWorkerIdle, [&] { return worker->next != nullptr; })) {
      return std::move(worker->next);
    }
  }
  Workers& workers = TheWorkers();
  std::lock_guard<std::mutex> workersLock(workers.mutex);
  std::lock_guard<std::mutex> lock(worker->mutex);
  if (worker->next) return std::move(worker->next);  // handed over meanwhile
  if (workers.current == worker) workers.current.reset();
  return nullptr;
}

struct WorkerStart {
  std::shared_ptr<CreationWorker> worker;
  HMODULE module;
};

DWORD WINAPI WorkerThread(void* parameter) {
  std::unique_ptr<WorkerStart> start(static_cast<WorkerStart*>(parameter));
  const HMODULE module = start->module;
  while (const std::shared_ptr<Creation> creation = NextCreation(start->worker)) {
    RunCreation(creation);
    std::lock_guard<std::mutex> lock(creation->mutex);
    // Whoever gave up on it has moved on to another worker.
    if (creation->abandoned) break;
  }
  start.reset();
  // The thread's code lives in this module: it lets go of its own reference
  // to it last, so a host that unloads the module meanwhile is not hurt.
  if (module) FreeLibraryAndExitThread(module, 0);
  return 0;
}

// The module that holds this code, with a reference of its own.
HMODULE ReferenceThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&WorkerThread), &module);
  return module;
}

// Hands `creation` to the worker, starting one where none serves; false
// when no thread could be started.
bool HandToWorker(const std::shared_ptr<Creation>& creation) {
  Workers& workers = TheWorkers();
  std::lock_guard<std::mutex> workersLock(workers.mutex);
  if (!workers.current) {
    auto worker = std::make_shared<CreationWorker>();
    auto start = std::make_unique<WorkerStart>(WorkerStart{worker, ReferenceThisModule()});
    const HANDLE thread = CreateThread(nullptr, 0, WorkerThread, start.get(), 0, nullptr);
    if (!thread) {
      if (start->module) FreeLibrary(start->module);
      return false;
    }
    CloseHandle(thread);
    start.release();  // the thread's now
    workers.current = std::move(worker);
  }
  std::lock_guard<std::mutex> lock(workers.current->mutex);
  workers.current->next = creation;
  workers.current->wake.notify_one();
  return true;
}

// The worker is stuck in a creation given up on: the next one starts another.
void LeaveStuckWorker() {
  Workers& workers = TheWorkers();
  std::lock_guard<std::mutex> lock(workers.mutex);
  workers.current.reset();
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
  if (!HandToWorker(creation)) return E_OUTOFMEMORY;

  std::unique_lock<std::mutex> lock(creation->mutex);
  if (!creation->done.wait_until(lock, until, [&] { return creation->finished; })) {
    creation->abandoned = true;
    LeaveStuckWorker();
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
