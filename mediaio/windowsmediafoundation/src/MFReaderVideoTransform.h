// The video processing transform of MFReader: it converts decoded frames to
// the client format when the source reader cannot do it itself.
#pragma once

#include <mfidl.h>
#include <mftransform.h>
#include <wrl/client.h>

#include <vector>

namespace windowsmediafoundation {

// Creates the platform's video processor, or else its colour converter;
// the HRESULT of the last attempt.
HRESULT CreateVideoProcessor(Microsoft::WRL::ComPtr<IMFTransform>& transform);

// Gives the transform `input` and, as output, the first of `subtypes` it
// accepts at the input's size and rate with top-down rows; `output` is the
// type in force.
HRESULT ConfigureConversion(IMFTransform* transform, IMFMediaType* input, const std::vector<GUID>& subtypes,
                            Microsoft::WRL::ComPtr<IMFMediaType>& output);

// Passes one decoded frame through. S_FALSE, with no frame, when the
// transform wants more input first. The frame keeps the input's time when
// the transform sets none.
HRESULT ConvertFrame(IMFTransform* transform, IMFSample* input, Microsoft::WRL::ComPtr<IMFSample>& output);

// After the last input: the next frame that the transform still holds, or
// S_FALSE when it holds none.
HRESULT DrainFrame(IMFTransform* transform, Microsoft::WRL::ComPtr<IMFSample>& output);

// Drops what the transform holds, after a seek.
void FlushConversion(IMFTransform* transform);

}  // namespace windowsmediafoundation
