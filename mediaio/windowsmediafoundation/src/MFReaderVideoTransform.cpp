#include "MFReaderVideoTransform.h"

#include <mfapi.h>
#include <mferror.h>
#include <wmcodecdsp.h>

#include <cstdlib>

namespace windowsmediafoundation {
namespace {

using Microsoft::WRL::ComPtr;

// CLSID_VideoProcessorMFT, which not every SDK's headers declare.
constexpr CLSID kClsidVideoProcessorMFT = {
    0x88753B26, 0x5B24, 0x49BD, {0xB2, 0xE7, 0x0C, 0x44, 0x5C, 0x78, 0xC9, 0x82}};

// The output type: the input's attributes (size, rate, aspect, interlacing)
// with `subtype`, its image size and a positive stride. Transforms that
// leave RGB bottom-up unless told otherwise then all write top-down.
HRESULT MakeOutputType(IMFMediaType* input, const GUID& subtype, ComPtr<IMFMediaType>& output) {
  UINT32 width = 0;
  UINT32 height = 0;
  HRESULT hr = MFGetAttributeSize(input, MF_MT_FRAME_SIZE, &width, &height);
  if (FAILED(hr)) return hr;
  LONG stride = 0;
  hr = MFGetStrideForBitmapInfoHeader(subtype.Data1, width, &stride);
  if (FAILED(hr)) return hr;
  UINT32 imageSize = 0;
  hr = MFCalculateImageSize(subtype, width, height, &imageSize);
  if (FAILED(hr)) return hr;
  hr = MFCreateMediaType(&output);
  if (FAILED(hr)) return hr;
  hr = input->CopyAllItems(output.Get());
  if (FAILED(hr)) return hr;
  hr = output->SetGUID(MF_MT_SUBTYPE, subtype);
  if (FAILED(hr)) return hr;
  hr = output->SetUINT32(MF_MT_DEFAULT_STRIDE, static_cast<UINT32>(std::labs(stride)));
  if (FAILED(hr)) return hr;
  return output->SetUINT32(MF_MT_SAMPLE_SIZE, imageSize);
}

// An empty sample with one buffer of the size and alignment the transform
// asks for.
HRESULT MakeOutputSample(const MFT_OUTPUT_STREAM_INFO& info, ComPtr<IMFSample>& sample) {
  ComPtr<IMFMediaBuffer> buffer;
  const DWORD size = info.cbSize ? info.cbSize : 1;
  HRESULT hr = info.cbAlignment > 1 ? MFCreateAlignedMemoryBuffer(size, info.cbAlignment - 1, &buffer)
                                    : MFCreateMemoryBuffer(size, &buffer);
  if (FAILED(hr)) return hr;
  hr = MFCreateSample(&sample);
  if (FAILED(hr)) return hr;
  return sample->AddBuffer(buffer.Get());
}

// One ProcessOutput call; S_FALSE when the transform needs more input.
HRESULT PullFrame(IMFTransform* transform, ComPtr<IMFSample>& output) {
  MFT_OUTPUT_STREAM_INFO info = {};
  HRESULT hr = transform->GetOutputStreamInfo(0, &info);
  if (FAILED(hr)) return hr;
  ComPtr<IMFSample> provided;
  if (!(info.dwFlags & (MFT_OUTPUT_STREAM_PROVIDES_SAMPLES | MFT_OUTPUT_STREAM_CAN_PROVIDE_SAMPLES))) {
    hr = MakeOutputSample(info, provided);
    if (FAILED(hr)) return hr;
  }
  MFT_OUTPUT_DATA_BUFFER data = {};
  data.pSample = provided.Get();
  DWORD status = 0;
  hr = transform->ProcessOutput(0, 1, &data, &status);
  if (data.pEvents) data.pEvents->Release();
  // A sample the transform allocated comes with a reference for the caller.
  ComPtr<IMFSample> produced = data.pSample;
  if (data.pSample && data.pSample != provided.Get()) data.pSample->Release();
  if (hr == MF_E_TRANSFORM_NEED_MORE_INPUT) return S_FALSE;
  if (FAILED(hr)) return hr;
  if (!produced) return E_UNEXPECTED;
  output = produced;
  return S_OK;
}

}  // namespace

HRESULT CreateVideoProcessor(ComPtr<IMFTransform>& transform) {
  HRESULT hr = CoCreateInstance(kClsidVideoProcessorMFT, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(transform.ReleaseAndGetAddressOf()));
  if (SUCCEEDED(hr)) return hr;
  return CoCreateInstance(CLSID_CColorConvertDMO, nullptr, CLSCTX_INPROC_SERVER,
                          IID_PPV_ARGS(transform.ReleaseAndGetAddressOf()));
}

HRESULT ConfigureConversion(IMFTransform* transform, IMFMediaType* input, const std::vector<GUID>& subtypes,
                            ComPtr<IMFMediaType>& output) {
  HRESULT hr = transform->SetInputType(0, input, 0);
  if (FAILED(hr)) return hr;
  hr = MF_E_INVALIDMEDIATYPE;
  for (const GUID& subtype : subtypes) {
    ComPtr<IMFMediaType> proposed;
    hr = MakeOutputType(input, subtype, proposed);
    if (FAILED(hr)) return hr;
    hr = transform->SetOutputType(0, proposed.Get(), 0);
    if (SUCCEEDED(hr)) break;
  }
  if (FAILED(hr)) return hr;
  hr = transform->GetOutputCurrentType(0, output.ReleaseAndGetAddressOf());
  if (FAILED(hr)) return hr;
  // A transform may ignore this notice, so its answer does not matter.
  transform->ProcessMessage(MFT_MESSAGE_NOTIFY_BEGIN_STREAMING, 0);
  return S_OK;
}

HRESULT ConvertFrame(IMFTransform* transform, IMFSample* input, ComPtr<IMFSample>& output) {
  HRESULT hr = transform->ProcessInput(0, input, 0);
  if (FAILED(hr)) return hr;
  hr = PullFrame(transform, output);
  if (hr != S_OK) return hr;
  LONGLONG time = 0;
  if (FAILED(output->GetSampleTime(&time)) && SUCCEEDED(input->GetSampleTime(&time))) {
    output->SetSampleTime(time);
  }
  return S_OK;
}

HRESULT DrainFrame(IMFTransform* transform, ComPtr<IMFSample>& output) {
  const HRESULT hr = transform->ProcessMessage(MFT_MESSAGE_COMMAND_DRAIN, 0);
  if (FAILED(hr)) return hr;
  return PullFrame(transform, output);
}

void FlushConversion(IMFTransform* transform) { transform->ProcessMessage(MFT_MESSAGE_COMMAND_FLUSH, 0); }

}  // namespace windowsmediafoundation
