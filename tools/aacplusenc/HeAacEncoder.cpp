// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeAacEncoder.h"

#include "common/ToolError.h"

#include <algorithm>
#include <fdk-aac/aacenc_lib.h>
#include <string>

namespace kruv::aacplusenc {
namespace {

using tools::ToolError;

/// Up to this rate one channel with a description of the stereo image sounds better than two.
constexpr std::uint32_t largestParametricStereoRate = 44'000; // bit/s

constexpr std::uint32_t sampleRates[] = {16000, 22050, 24000, 32000, 44100, 48000, 64000, 88200, 96000};

/// What the library calls the channels in WAV order, and the speakers (as in WAVEFORMATEXTENSIBLE) they stand
/// for.
struct ChannelMode
{
    unsigned channels;
    std::uint32_t mode;
    bool usual; ///< what so many channels are when nothing is told about them
    std::uint32_t speakers[2];
};
constexpr ChannelMode channelModes[] = {
    {1, MODE_1, true, {0x004, 0x001}},
    {2, MODE_2, true, {0x003, 0x003}},
    {3, MODE_1_2, true, {0x007, 0x007}},
    {4, MODE_1_2_1, false, {0x107, 0x107}},
    {5, MODE_1_2_2, true, {0x037, 0x607}},
    {6, MODE_1_2_2_1, true, {0x03F, 0x60F}},
    {8, MODE_7_1_REAR_SURROUND, true, {0x63F, 0x63F}},
};

std::uint32_t channelMode(unsigned channels, std::uint32_t speakers)
{
    const auto *mode = std::ranges::find(channelModes, channels, &ChannelMode::channels);
    if (mode == std::end(channelModes)) {
        throw ToolError("HE-AAC is made of 1 to 6 or 8 channels, not of " + std::to_string(channels));
    }
    const bool told = speakers != 0 || !mode->usual;
    if (channels > 2 && told && std::ranges::find(mode->speakers, speakers) == std::end(mode->speakers)) {
        throw ToolError("there is no HE-AAC for " + std::to_string(channels) + " channels with " +
                        (speakers == 0 ? "unknown" : "these") + " speakers");
    }
    return mode->mode;
}

void checkSampleRate(std::uint32_t sampleRate)
{
    if (std::ranges::find(sampleRates, sampleRate) == std::end(sampleRates)) {
        throw ToolError("there is no HE-AAC with a sample rate of " + std::to_string(sampleRate) +
                        " Hz, only 16000, 22050, 24000, 32000, 44100, 48000, 64000, 88200 and 96000");
    }
}

[[noreturn]] void refuse(std::uint32_t sampleRate, unsigned channels, std::uint32_t bitRate,
                         const std::string &advice = {})
{
    throw ToolError("there is no HE-AAC of " + std::to_string(bitRate / 1000) + " kbit/s for " +
                    std::to_string(sampleRate) + " Hz and " + std::to_string(channels) +
                    (channels == 1 ? " channel" : " channels") + advice);
}

/// Decoders take mono HE-AAC for stereo unless its configuration says that no parametric stereo will come.
/// The library's ends, 37 bits long, with the extension for spectral band replication; the word 0x548 and a
/// zero bit go behind it.
void denyParametricStereo(std::vector<std::uint8_t> &config)
{
    constexpr std::size_t librarysBytes = 5;
    if (config.size() != librarysBytes) {
        return;
    }
    config.back() |= 0x548 >> 8;
    config.push_back(0x548 & 0xFF);
    config.push_back(0);
}

} // namespace

void HeAacEncoder::Closer::operator()(AACENCODER *encoder) const
{
    aacEncClose(&encoder);
}

HeAacEncoder::HeAacEncoder(std::uint32_t sampleRate, unsigned channels, std::uint32_t speakers,
                           std::uint32_t bitRate)
{
    checkSampleRate(sampleRate);
    const std::uint32_t mode = channelMode(channels, speakers);
    const bool parametricStereo = channels == 2 && bitRate <= largestParametricStereoRate;
    AACENCODER *encoder = nullptr;
    if (aacEncOpen(&encoder, 0, channels) != AACENC_OK) {
        throw ToolError("the HE-AAC encoder cannot be opened");
    }
    m_encoder.reset(encoder);

    constexpr std::uint32_t rawAccessUnits = 0;
    constexpr std::uint32_t wavChannelOrder = 1;
    // The decoder configuration describes the plain AAC core and then the extensions, so that every player
    // takes it: old ones play the core, others need not guess the rate.
    constexpr std::uint32_t backwardCompatibleSignalling = 1;
    const bool accepted =
        set(AACENC_AOT, parametricStereo ? AOT_PS : AOT_SBR) && set(AACENC_SAMPLERATE, sampleRate) &&
        set(AACENC_CHANNELMODE, mode) && set(AACENC_CHANNELORDER, wavChannelOrder) &&
        set(AACENC_BITRATEMODE, 0) && set(AACENC_BITRATE, bitRate) && set(AACENC_TRANSMUX, rawAccessUnits) &&
        set(AACENC_SIGNALING_MODE, backwardCompatibleSignalling) && set(AACENC_AFTERBURNER, 1);
    AACENC_InfoStruct info{};
    if (!accepted || aacEncEncode(encoder, nullptr, nullptr, nullptr, nullptr) != AACENC_OK ||
        aacEncInfo(encoder, &info) != AACENC_OK) {
        refuse(sampleRate, channels, bitRate);
    }
    // Outside its range the library would quietly take another rate.
    const std::uint32_t actual = aacEncoder_GetParam(encoder, AACENC_BITRATE);
    if (actual > bitRate) {
        refuse(sampleRate, channels, bitRate, "; the least is " + std::to_string((actual + 999) / 1000));
    }
    if (actual < bitRate) {
        refuse(sampleRate, channels, bitRate, "; the most is " + std::to_string(actual / 1000));
    }

    m_delay = info.nDelay;
    m_framesPerAccessUnit = info.frameLength;
    m_decoderConfig.assign(info.confBuf, info.confBuf + info.confSize);
    if (channels == 1) {
        denyParametricStereo(m_decoderConfig);
    }
    m_output.resize(info.maxOutBufBytes);
}

bool HeAacEncoder::set(int parameter, std::uint32_t value)
{
    return aacEncoder_SetParam(m_encoder.get(), static_cast<AACENC_PARAM>(parameter), value) == AACENC_OK;
}

std::span<const std::uint8_t> HeAacEncoder::encode(std::span<const std::int16_t> samples)
{
    m_input.assign(samples.begin(), samples.end()); // the library's interface takes no constant samples
    void *inputs[] = {m_input.data()};
    int inputKinds[] = {IN_AUDIO_DATA};
    int inputBytes[] = {static_cast<int>(m_input.size() * sizeof(std::int16_t))};
    int inputElementBytes[] = {2};
    const AACENC_BufDesc input{1, inputs, inputKinds, inputBytes, inputElementBytes};

    void *outputs[] = {m_output.data()};
    int outputKinds[] = {OUT_BITSTREAM_DATA};
    int outputBytes[] = {static_cast<int>(m_output.size())};
    int outputElementBytes[] = {1};
    const AACENC_BufDesc output{1, outputs, outputKinds, outputBytes, outputElementBytes};

    const AACENC_InArgs arguments{static_cast<int>(m_input.size()), 0};
    AACENC_OutArgs result{};
    const AACENC_ERROR error = aacEncEncode(m_encoder.get(), &input, &output, &arguments, &result);
    if (error != AACENC_OK || result.numInSamples != arguments.numInSamples) {
        throw ToolError("the HE-AAC encoder failed (error " + std::to_string(error) + ")");
    }
    return std::span<const std::uint8_t>(m_output).first(static_cast<std::size_t>(result.numOutBytes));
}

} // namespace kruv::aacplusenc
