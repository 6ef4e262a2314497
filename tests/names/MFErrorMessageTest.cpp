#include "MFErrorMessage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "MFErrorTable.h"
#include "orxcore/Localizer.h"

namespace windowsmediafoundation {
namespace {

constexpr std::string_view kKeyPrefix = "$$$/windowsmediafoundation/Errors/";

std::string Message(std::uint32_t code) {
  return orxcore::UTF16toStdString(MFErrorMessage(static_cast<std::int32_t>(code)));
}

// The name between the key prefix and the "=".
std::string NameOf(const MFErrorEntry& entry) {
  const std::string_view key = entry.key;
  const std::size_t equals = key.find('=');
  if (key.substr(0, kKeyPrefix.size()) != kKeyPrefix || equals == std::string_view::npos) {
    return "malformed key: " + std::string(key);
  }
  return std::string(key.substr(kKeyPrefix.size(), equals - kKeyPrefix.size()));
}

TEST(MFErrorMessage, TellingCodesHaveThePlatformsTexts) {
  const struct {
    std::uint32_t code;
    const char* text;
  } kCases[] = {
      {0x00000000, "Operation successful"},
      {0x80004004, "Operation aborted"},
      {0x80070005, "General access denied error"},
      {0x80004005, "Unspecified failure"},
      {0x80070006, "Invalid Handle"},
      {0x80070057, "One or more arguments are not valid"},
      {0x80004002, "No such interface supported"},
      {0x80004001, "Not implemented"},
      {0x8007000E, "Failed to allocate necessary memory"},
      {0x80004003, "Invalid Pointer"},
      {0x8000FFFF, "Unexpected failure"},
      {0xC00D36E6, "The requested attribute was not found."},
      {0xC00D36EE, "The provided bytestream was expected to be seekable and it is not."},
      {0xC00D3E84,
       "The media stream cannot process any more samples because there are no more samples in "
       "the stream."},
      {0xC00D36B4,
       "The data specified for the media type is invalid, inconsistent, or not supported by this "
       "object."},
      {0xC00D36BE, "The file does not conform to the relevant file format specification."},
      {0xC00D36B9,
       "An object ran out of media types to suggest therefore the requested chain of streaming "
       "objects cannot be completed."},
      {0xC00D36B5, "The callee is currently not accepting further input."},
      {0xC00D36B0, "Platform not initialized. Please call MFStartup()."},
      {0xC00D3E85, "The request is invalid because Shutdown() has been called."},
      {0xC00D5212, "No suitable transform was found to encode or decode the content."},
      {0xC00D6D72, "The transform cannot produce output until it gets more input samples."},
      {0xC00D36C4, "The byte stream type of the given URL is unsupported."},
      {0xC00D3E98, "The Media format is recognized but not supported."},
      {0x000D7173, "The Protected Environment is trusted."},
  };
  for (const auto& c : kCases) EXPECT_EQ(Message(c.code), c.text) << std::hex << c.code;
}

TEST(MFErrorMessage, UnnamedCodesGetTheDefaultTextInUpperCaseHex) {
  EXPECT_EQ(Message(0x80004321), "Media Foundation returned error 0x80004321");
  EXPECT_EQ(Message(0xC00DABCD), "Media Foundation returned error 0xC00DABCD");
  EXPECT_EQ(Message(0x12), "Media Foundation returned error 0x12");
  EXPECT_EQ(Message(0x1), "Media Foundation returned error 0x1");  // S_FALSE has no name here
  EXPECT_EQ(Message(0xFFFFFFFF), "Media Foundation returned error 0xFFFFFFFF");
}

TEST(MFErrorMessage, OnlyExactValuesAreNamed) {
  // Gaps inside the Media Foundation ranges and near neighbours of named codes.
  EXPECT_EQ(Message(0xC00D36B8), "Media Foundation returned error 0xC00D36B8");
  EXPECT_EQ(Message(0x800D36E6), "Media Foundation returned error 0x800D36E6");
  EXPECT_EQ(Message(0x000D36E6), "Media Foundation returned error 0xD36E6");
  EXPECT_EQ(Message(0xC00D36E6), "The requested attribute was not found.");
}

TEST(MFErrorTable, NamesAreExactlyThePlatformsList) {
  static const char* const kNames[] = {
    "E_ABORT", "E_ACCESSDENIED", "E_FAIL", "E_HANDLE", "E_INVALIDARG", "E_NOINTERFACE", "E_NOTIMPL",
    "E_OUTOFMEMORY", "E_POINTER", "E_UNEXPECTED", "MF_E_ALLOCATOR_ALREADY_COMMITED",
    "MF_E_ALLOCATOR_NOT_COMMITED", "MF_E_ALLOCATOR_NOT_INITIALIZED",
    "MF_E_ALL_PROCESS_RESTART_REQUIRED", "MF_E_ALREADY_INITIALIZED", "MF_E_ASF_DROPPED_PACKET",
    "MF_E_ASF_FILESINK_BITRATE_UNKNOWN", "MF_E_ASF_INDEXNOTLOADED", "MF_E_ASF_INVALIDDATA",
    "MF_E_ASF_MISSINGDATA", "MF_E_ASF_NOINDEX", "MF_E_ASF_OPAQUEPACKET", "MF_E_ASF_OUTOFRANGE",
    "MF_E_ASF_PARSINGINCOMPLETE", "MF_E_ASF_TOO_MANY_PAYLOADS", "MF_E_ASF_UNSUPPORTED_STREAM_TYPE",
    "MF_E_ATTRIBUTENOTFOUND", "MF_E_AUDIO_PLAYBACK_DEVICE_INVALIDATED",
    "MF_E_AUDIO_PLAYBACK_DEVICE_IN_USE", "MF_E_AUDIO_SERVICE_NOT_RUNNING",
    "MF_E_BACKUP_RESTRICTED_LICENSE", "MF_E_BAD_OPL_STRUCTURE_FORMAT", "MF_E_BAD_STARTUP_VERSION",
    "MF_E_BANDWIDTH_OVERRUN", "MF_E_BUFFERTOOSMALL", "MF_E_BYTESTREAM_NOT_SEEKABLE",
    "MF_E_BYTESTREAM_UNKNOWN_LENGTH", "MF_E_CANNOT_CREATE_SINK", "MF_E_CANNOT_FIND_KEYFRAME_SAMPLE",
    "MF_E_CANNOT_INDEX_IN_PLACE", "MF_E_CANNOT_PARSE_BYTESTREAM",
    "MF_E_CLOCK_INVALID_CONTINUITY_KEY", "MF_E_CLOCK_NOT_SIMPLE", "MF_E_CLOCK_NO_TIME_SOURCE",
    "MF_E_CLOCK_STATE_ALREADY_SET", "MF_E_CODE_EXPIRED", "MF_E_COMPONENT_REVOKED",
    "MF_E_DEBUGGING_NOT_ALLOWED", "MF_E_DISABLED_IN_SAFEMODE", "MF_E_DRM_HARDWARE_INCONSISTENT",
    "MF_E_DRM_UNSUPPORTED", "MF_E_DROPTIME_NOT_SUPPORTED", "MF_E_END_OF_STREAM",
    "MF_E_FLUSH_NEEDED", "MF_E_FORMAT_CHANGE_NOT_SUPPORTED", "MF_E_GRL_ABSENT",
    "MF_E_GRL_EXTENSIBLE_ENTRY_NOT_FOUND", "MF_E_GRL_INVALID_FORMAT", "MF_E_GRL_RENEWAL_NOT_FOUND",
    "MF_E_GRL_UNRECOGNIZED_FORMAT", "MF_E_GRL_VERSION_TOO_LOW",
    "MF_E_HIGH_SECURITY_LEVEL_CONTENT_NOT_ALLOWED", "MF_E_HW_MFT_FAILED_START_STREAMING",
    "MF_E_HW_STREAM_NOT_CONNECTED", "MF_E_INCOMPATIBLE_SAMPLE_PROTECTION",
    "MF_E_INDEX_NOT_COMMITTED", "MF_E_INSUFFICIENT_BUFFER", "MF_E_INVALIDINDEX",
    "MF_E_INVALIDMEDIATYPE", "MF_E_INVALIDNAME", "MF_E_INVALIDREQUEST", "MF_E_INVALIDSTREAMNUMBER",
    "MF_E_INVALIDTYPE", "MF_E_INVALID_ASF_STREAMID", "MF_E_INVALID_CODEC_MERIT",
    "MF_E_INVALID_FILE_FORMAT", "MF_E_INVALID_FORMAT", "MF_E_INVALID_KEY", "MF_E_INVALID_POSITION",
    "MF_E_INVALID_PROFILE", "MF_E_INVALID_STATE_TRANSITION", "MF_E_INVALID_STREAM_DATA",
    "MF_E_INVALID_STREAM_STATE", "MF_E_INVALID_TIMESTAMP", "MF_E_INVALID_WORKQUEUE",
    "MF_E_ITA_ERROR_PARSING_SAP_PARAMETERS", "MF_E_ITA_OPL_DATA_NOT_INITIALIZED",
    "MF_E_ITA_UNRECOGNIZED_ANALOG_VIDEO_OUTPUT",
    "MF_E_ITA_UNRECOGNIZED_ANALOG_VIDEO_PROTECTION_GUID",
    "MF_E_ITA_UNRECOGNIZED_DIGITAL_VIDEO_OUTPUT", "MF_E_ITA_UNSUPPORTED_ACTION",
    "MF_E_KERNEL_UNTRUSTED", "MF_E_LATE_SAMPLE", "MF_E_LICENSE_INCORRECT_RIGHTS",
    "MF_E_LICENSE_OUTOFDATE", "MF_E_LICENSE_REQUIRED",
    "MF_E_LICENSE_RESTORE_NEEDS_INDIVIDUALIZATION", "MF_E_LICENSE_RESTORE_NO_RIGHTS",
    "MF_E_MEDIAPROC_WRONGSTATE", "MF_E_MEDIA_SOURCE_NOT_STARTED",
    "MF_E_MEDIA_SOURCE_NO_STREAMS_SELECTED", "MF_E_MEDIA_SOURCE_WRONGSTATE",
    "MF_E_METADATA_TOO_LONG", "MF_E_MISSING_ASF_LEAKYBUCKET", "MF_E_MP3_BAD_CRC",
    "MF_E_MP3_NOTFOUND", "MF_E_MP3_NOTMP3", "MF_E_MP3_NOTSUPPORTED", "MF_E_MP3_OUTOFDATA",
    "MF_E_MULTIPLE_BEGIN", "MF_E_MULTIPLE_SUBSCRIBERS", "MF_E_NETWORK_RESOURCE_FAILURE",
    "MF_E_NET_BAD_CONTROL_DATA", "MF_E_NET_BAD_REQUEST", "MF_E_NET_BUSY",
    "MF_E_NET_BWLEVEL_NOT_SUPPORTED", "MF_E_NET_CACHESTREAM_NOT_FOUND", "MF_E_NET_CACHE_NO_DATA",
    "MF_E_NET_CANNOTCONNECT", "MF_E_NET_CLIENT_CLOSE", "MF_E_NET_CONNECTION_FAILURE",
    "MF_E_NET_EOL", "MF_E_NET_ERROR_FROM_PROXY", "MF_E_NET_INCOMPATIBLE_PUSHSERVER",
    "MF_E_NET_INCOMPATIBLE_SERVER", "MF_E_NET_INTERNAL_SERVER_ERROR",
    "MF_E_NET_INVALID_PRESENTATION_DESCRIPTOR", "MF_E_NET_INVALID_PUSH_PUBLISHING_POINT",
    "MF_E_NET_INVALID_PUSH_TEMPLATE", "MF_E_NET_MANUALSS_NOT_SUPPORTED", "MF_E_NET_NOCONNECTION",
    "MF_E_NET_PROTOCOL_DISABLED", "MF_E_NET_PROXY_ACCESSDENIED", "MF_E_NET_PROXY_TIMEOUT",
    "MF_E_NET_READ", "MF_E_NET_REDIRECT", "MF_E_NET_REDIRECT_TO_PROXY", "MF_E_NET_REQUIRE_ASYNC",
    "MF_E_NET_REQUIRE_INPUT", "MF_E_NET_REQUIRE_NETWORK", "MF_E_NET_RESOURCE_GONE",
    "MF_E_NET_SERVER_ACCESSDENIED", "MF_E_NET_SERVER_UNAVAILABLE", "MF_E_NET_SESSION_INVALID",
    "MF_E_NET_SESSION_NOT_FOUND", "MF_E_NET_STREAMGROUPS_NOT_SUPPORTED", "MF_E_NET_TIMEOUT",
    "MF_E_NET_TOO_MANY_REDIRECTS", "MF_E_NET_TOO_MUCH_DATA", "MF_E_NET_UDP_BLOCKED",
    "MF_E_NET_UNSAFE_URL", "MF_E_NET_UNSUPPORTED_CONFIGURATION", "MF_E_NET_WRITE",
    "MF_E_NEW_VIDEO_DEVICE", "MF_E_NON_PE_PROCESS", "MF_E_NOTACCEPTING", "MF_E_NOT_AVAILABLE",
    "MF_E_NOT_FOUND", "MF_E_NOT_INITIALIZED", "MF_E_NOT_PROTECTED", "MF_E_NO_AUDIO_PLAYBACK_DEVICE",
    "MF_E_NO_BITPUMP", "MF_E_NO_CLOCK", "MF_E_NO_CONTENT_PROTECTION_MANAGER", "MF_E_NO_DURATION",
    "MF_E_NO_EVENTS_AVAILABLE", "MF_E_NO_INDEX", "MF_E_NO_MORE_DROP_MODES",
    "MF_E_NO_MORE_QUALITY_LEVELS", "MF_E_NO_MORE_TYPES", "MF_E_NO_PMP_HOST",
    "MF_E_NO_SAMPLE_DURATION", "MF_E_NO_SAMPLE_TIMESTAMP", "MF_E_NO_SOURCE_IN_CACHE",
    "MF_E_NO_VIDEO_SAMPLE_AVAILABLE", "MF_E_OFFLINE_MODE", "MF_E_OPERATION_CANCELLED",
    "MF_E_OPL_NOT_SUPPORTED", "MF_E_OUT_OF_RANGE", "MF_E_PEAUTH_NOT_STARTED",
    "MF_E_PEAUTH_PUBLICKEY_REVOKED", "MF_E_PEAUTH_SESSION_NOT_STARTED", "MF_E_PEAUTH_UNTRUSTED",
    "MF_E_PE_SESSIONS_MAXED", "MF_E_PE_UNTRUSTED", "MF_E_PLATFORM_NOT_INITIALIZED",
    "MF_E_POLICY_MGR_ACTION_OUTOFBOUNDS", "MF_E_POLICY_UNSUPPORTED",
    "MF_E_PROCESS_RESTART_REQUIRED", "MF_E_PROPERTY_EMPTY", "MF_E_PROPERTY_NOT_ALLOWED",
    "MF_E_PROPERTY_NOT_EMPTY", "MF_E_PROPERTY_NOT_FOUND", "MF_E_PROPERTY_READ_ONLY",
    "MF_E_PROPERTY_TYPE_NOT_ALLOWED", "MF_E_PROPERTY_TYPE_NOT_SUPPORTED",
    "MF_E_PROPERTY_VECTOR_NOT_ALLOWED", "MF_E_PROPERTY_VECTOR_REQUIRED", "MF_E_QM_INVALIDSTATE",
    "MF_E_QUALITYKNOB_WAIT_LONGER", "MF_E_RATE_CHANGE_PREEMPTED", "MF_E_REBOOT_REQUIRED",
    "MF_E_REVERSE_UNSUPPORTED", "MF_E_RT_OUTOFMEMORY", "MF_E_RT_THROUGHPUT_NOT_AVAILABLE",
    "MF_E_RT_TOO_MANY_CLASSES", "MF_E_RT_UNAVAILABLE", "MF_E_RT_WORKQUEUE_CLASS_NOT_SPECIFIED",
    "MF_E_RT_WOULDBLOCK", "MF_E_SAMPLEALLOCATOR_CANCELED", "MF_E_SAMPLEALLOCATOR_EMPTY",
    "MF_E_SAMPLE_HAS_TOO_MANY_BUFFERS", "MF_E_SAMPLE_NOT_WRITABLE",
    "MF_E_SEQUENCER_UNKNOWN_SEGMENT_ID", "MF_E_SESSION_PAUSEWHILESTOPPED", "MF_E_SHUTDOWN",
    "MF_E_SIGNATURE_VERIFICATION_FAILED", "MF_E_SINK_ALREADYSTOPPED",
    "MF_E_SINK_NO_SAMPLES_PROCESSED", "MF_E_SINK_NO_STREAMS",
    "MF_E_SOURCERESOLVER_MUTUALLY_EXCLUSIVE_FLAGS", "MF_E_STATE_TRANSITION_PENDING",
    "MF_E_STREAMSINKS_FIXED", "MF_E_STREAMSINKS_OUT_OF_SYNC", "MF_E_STREAMSINK_EXISTS",
    "MF_E_STREAMSINK_REMOVED", "MF_E_STREAM_ERROR", "MF_E_TEST_SIGNED_COMPONENTS_NOT_ALLOWED",
    "MF_E_THINNING_UNSUPPORTED", "MF_E_TIMER_ORPHANED", "MF_E_TOPOLOGY_VERIFICATION_FAILED",
    "MF_E_TOPO_CANNOT_CONNECT", "MF_E_TOPO_CANNOT_FIND_DECRYPTOR", "MF_E_TOPO_CODEC_NOT_FOUND",
    "MF_E_TOPO_INVALID_OPTIONAL_NODE", "MF_E_TOPO_INVALID_TIME_ATTRIBUTES",
    "MF_E_TOPO_LOOPS_IN_TOPOLOGY", "MF_E_TOPO_MISSING_PRESENTATION_DESCRIPTOR",
    "MF_E_TOPO_MISSING_SOURCE", "MF_E_TOPO_MISSING_STREAM_DESCRIPTOR",
    "MF_E_TOPO_SINK_ACTIVATES_UNSUPPORTED", "MF_E_TOPO_STREAM_DESCRIPTOR_NOT_SELECTED",
    "MF_E_TOPO_UNSUPPORTED", "MF_E_TRANSCODE_NO_CONTAINERTYPE",
    "MF_E_TRANSCODE_NO_MATCHING_ENCODER", "MF_E_TRANSCODE_PROFILE_NO_MATCHING_STREAMS",
    "MF_E_TRANSFORM_ASYNC_LOCKED", "MF_E_TRANSFORM_CANNOT_CHANGE_MEDIATYPE_WHILE_PROCESSING",
    "MF_E_TRANSFORM_CANNOT_INITIALIZE_ACM_DRIVER",
    "MF_E_TRANSFORM_CONFLICTS_WITH_OTHER_CURRENTLY_ENABLED_FEATURES",
    "MF_E_TRANSFORM_INPUT_REMAINING", "MF_E_TRANSFORM_NEED_MORE_INPUT",
    "MF_E_TRANSFORM_NOT_POSSIBLE_FOR_CURRENT_INPUT_MEDIATYPE",
    "MF_E_TRANSFORM_NOT_POSSIBLE_FOR_CURRENT_MEDIATYPE_COMBINATION",
    "MF_E_TRANSFORM_NOT_POSSIBLE_FOR_CURRENT_OUTPUT_MEDIATYPE",
    "MF_E_TRANSFORM_NOT_POSSIBLE_FOR_CURRENT_SPKR_CONFIG",
    "MF_E_TRANSFORM_PROFILE_INVALID_OR_CORRUPT", "MF_E_TRANSFORM_PROFILE_MISSING",
    "MF_E_TRANSFORM_PROFILE_TRUNCATED", "MF_E_TRANSFORM_PROPERTY_ARRAY_VALUE_WRONG_NUM_DIM",
    "MF_E_TRANSFORM_PROPERTY_NOT_WRITEABLE", "MF_E_TRANSFORM_PROPERTY_PID_NOT_RECOGNIZED",
    "MF_E_TRANSFORM_PROPERTY_VALUE_INCOMPATIBLE", "MF_E_TRANSFORM_PROPERTY_VALUE_OUT_OF_RANGE",
    "MF_E_TRANSFORM_PROPERTY_VALUE_SIZE_WRONG", "MF_E_TRANSFORM_PROPERTY_VARIANT_TYPE_WRONG",
    "MF_E_TRANSFORM_STREAM_CHANGE", "MF_E_TRANSFORM_TYPE_NOT_SET", "MF_E_TRUST_DISABLED",
    "MF_E_UNAUTHORIZED", "MF_E_UNEXPECTED", "MF_E_UNRECOVERABLE_ERROR_OCCURRED",
    "MF_E_UNSUPPORTED_BYTESTREAM_TYPE", "MF_E_UNSUPPORTED_CAPTION", "MF_E_UNSUPPORTED_D3D_TYPE",
    "MF_E_UNSUPPORTED_FORMAT", "MF_E_UNSUPPORTED_RATE", "MF_E_UNSUPPORTED_RATE_TRANSITION",
    "MF_E_UNSUPPORTED_REPRESENTATION", "MF_E_UNSUPPORTED_SCHEME", "MF_E_UNSUPPORTED_SERVICE",
    "MF_E_UNSUPPORTED_STATE_TRANSITION", "MF_E_UNSUPPORTED_TIME_FORMAT", "MF_E_USERMODE_UNTRUSTED",
    "MF_E_VIDEO_DEVICE_LOCKED", "MF_E_VIDEO_REN_COPYPROT_FAILED",
    "MF_E_VIDEO_REN_NO_DEINTERLACE_HW", "MF_E_VIDEO_REN_NO_PROCAMP_HW",
    "MF_E_VIDEO_REN_SURFACE_NOT_SHARED", "MF_E_WMDRMOTA_ACTION_ALREADY_SET",
    "MF_E_WMDRMOTA_ACTION_MISMATCH", "MF_E_WMDRMOTA_DRM_ENCRYPTION_SCHEME_NOT_SUPPORTED",
    "MF_E_WMDRMOTA_DRM_HEADER_NOT_AVAILABLE", "MF_E_WMDRMOTA_INVALID_POLICY",
    "MF_E_WMDRMOTA_NO_ACTION", "MF_I_MANUAL_PROXY", "MF_S_ACTIVATE_REPLACED",
    "MF_S_ASF_PARSEINPROGRESS", "MF_S_CLOCK_STOPPED", "MF_S_MULTIPLE_BEGIN", "MF_S_PE_TRUSTED",
    "MF_S_PROTECTION_NOT_REQUIRED", "MF_S_SEQUENCER_CONTEXT_CANCELED",
    "MF_S_SEQUENCER_SEGMENT_AT_END_OF_STREAM", "MF_S_SINK_NOT_FINALIZED",
    "MF_S_TRANSFORM_DO_NOT_PROPAGATE_EVENT", "MF_S_VIDEO_DISABLED_WITH_UNKNOWN_SOFTWARE_OUTPUT",
    "MF_S_WAIT_FOR_POLICY_SET", "S_OK",
  };
  static_assert(std::size(kNames) == 309, "309 named codes");
  std::vector<std::string> expected(std::begin(kNames), std::end(kNames));
  std::vector<std::string> actual;
  for (const MFErrorEntry& entry : MFErrorEntries()) actual.push_back(NameOf(entry));
  std::sort(expected.begin(), expected.end());
  std::sort(actual.begin(), actual.end());
  EXPECT_EQ(actual, expected);
}

TEST(MFErrorTable, EveryKeyHasAnEnglishTextAndEveryCodeIsFound) {
  for (const MFErrorEntry& entry : MFErrorEntries()) {
    SCOPED_TRACE(std::string(entry.key));
    const std::string_view text = entry.key.substr(entry.key.find('=') + 1);
    EXPECT_FALSE(text.empty());
    EXPECT_EQ(FindMFErrorEntry(entry.code), &entry);
    EXPECT_EQ(Message(entry.code), text);
  }
}

class TranslatedErrorMessages : public ::testing::Test {
 protected:
  void TearDown() override { orxcore::Localizer::Get().ClearTranslations(); }
};

TEST_F(TranslatedErrorMessages, NamedAndDefaultKeysUseTheTranslation) {
  orxcore::Localizer& localizer = orxcore::Localizer::Get();
  localizer.SetTranslation("$$$/windowsmediafoundation/Errors/MF_E_SHUTDOWN",
                           u"Shutdown() wurde bereits aufgerufen.");
  localizer.SetTranslation("$$$/windowsmediafoundation/Errors/DefaultError",
                           u"Erreur 0x@0 de Media Foundation");
  EXPECT_EQ(MFErrorMessage(static_cast<std::int32_t>(0xC00D3E85)),
            u"Shutdown() wurde bereits aufgerufen.");
  EXPECT_EQ(MFErrorMessage(static_cast<std::int32_t>(0x80004321)),
            u"Erreur 0x80004321 de Media Foundation");
  EXPECT_EQ(Message(0x80004005), "Unspecified failure");
}

class MFErrorTrace : public ::testing::Test {
 protected:
  void TearDown() override { orxcore::SetTraceConfiguration(""); }
};

TEST_F(MFErrorTrace, WritesTheMessageOnlyWhenTheSiteIsOn) {
  orxcore::TraceSite site("windowsmediafoundation.MFReader.Test", 5);
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=7");
  testing::internal::CaptureStderr();
  TraceMFError(site, static_cast<std::int32_t>(0x80004005));
  TraceMFError(site, 0x12);
  orxcore::SetTraceConfiguration("windowsmediafoundation.*=4");
  TraceMFError(site, static_cast<std::int32_t>(0x80004003));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error: Unspecified failure\r\nError: Media Foundation returned error 0x12\r\n");
}

}  // namespace
}  // namespace windowsmediafoundation
