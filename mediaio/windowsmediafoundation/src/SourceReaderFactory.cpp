#include "SourceReaderFactory.h"

#include <mfapi.h>

namespace windowsmediafoundation {
namespace {

const SourceReaderFactory* g_currentFactory = nullptr;

}  // namespace

const SourceReaderFactory& MediaFoundationSourceReaderFactory() {
  static const SourceReaderFactory factory{MFCreateSourceReaderFromURL, MFCreateSourceReaderFromByteStream};
  return factory;
}

const SourceReaderFactory& CurrentSourceReaderFactory() {
  return g_currentFactory ? *g_currentFactory : MediaFoundationSourceReaderFactory();
}

ScopedSourceReaderFactory::ScopedSourceReaderFactory(SourceReaderFactory factory)
    : factory_(std::move(factory)), previous_(g_currentFactory) {
  g_currentFactory = &factory_;
}

ScopedSourceReaderFactory::~ScopedSourceReaderFactory() { g_currentFactory = previous_; }

}  // namespace windowsmediafoundation
