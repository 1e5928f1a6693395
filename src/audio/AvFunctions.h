// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/channel_layout.h>
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/log.h>
#include <libavutil/mathematics.h>
#include <libavutil/mem.h>
#include <libavutil/opt.h>
#include <libavutil/samplefmt.h>
#include <libswresample/swresample.h>
}

/// FFmpeg's functions under their own names, each found at its first call: linked to the program, FFmpeg's
/// hundred libraries would make every start of it six times as long.
namespace kruv {

enum class AvLibrary { Util, Codec, Format, Resample };

/// Throws AudioError where the library, or in it the function, is missing.
void *findInAvLibrary(AvLibrary library, const char *name);

template <typename Function> class AvFunction;

template <typename Result, typename... Parameters> class AvFunction<Result(Parameters...)>
{
public:
    consteval AvFunction(AvLibrary library, const char *name)
        : m_library(library)
        , m_name(name)
    {
    }

    Result operator()(Parameters... arguments) { return found()(arguments...); }

private:
    using Address = Result (*)(Parameters...);

    Address found()
    {
        Address address = m_address.load(std::memory_order_relaxed);
        if (address == nullptr) {
            address = reinterpret_cast<Address>(findInAvLibrary(m_library, m_name));
            m_address.store(address, std::memory_order_relaxed);
        }
        return address;
    }

    const AvLibrary m_library;
    const char *const m_name;
    std::atomic<Address> m_address = nullptr;
};

// What FFmpeg promises the compiler of some of them is not needed.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-attributes"

#define KRUV_AV_FUNCTION(library, name)                                                                      \
    inline constinit AvFunction<decltype(::name)> name(AvLibrary::library, #name)

KRUV_AV_FUNCTION(Util, av_audio_fifo_alloc);
KRUV_AV_FUNCTION(Util, av_audio_fifo_free);
KRUV_AV_FUNCTION(Util, av_audio_fifo_read);
KRUV_AV_FUNCTION(Util, av_audio_fifo_size);
KRUV_AV_FUNCTION(Util, av_audio_fifo_write);
KRUV_AV_FUNCTION(Util, av_channel_layout_compare);
KRUV_AV_FUNCTION(Util, av_channel_layout_copy);
KRUV_AV_FUNCTION(Util, av_channel_layout_default);
KRUV_AV_FUNCTION(Util, av_channel_layout_from_mask);
KRUV_AV_FUNCTION(Util, av_dict_free);
KRUV_AV_FUNCTION(Util, av_dict_set);
KRUV_AV_FUNCTION(Util, av_dict_set_int);
KRUV_AV_FUNCTION(Util, av_frame_alloc);
KRUV_AV_FUNCTION(Util, av_frame_free);
KRUV_AV_FUNCTION(Util, av_frame_get_buffer);
KRUV_AV_FUNCTION(Util, av_frame_unref);
KRUV_AV_FUNCTION(Util, av_free);
KRUV_AV_FUNCTION(Util, av_freep);
KRUV_AV_FUNCTION(Util, av_get_bytes_per_sample);
KRUV_AV_FUNCTION(Util, av_get_packed_sample_fmt);
KRUV_AV_FUNCTION(Util, av_log_set_callback);
KRUV_AV_FUNCTION(Util, av_malloc);
KRUV_AV_FUNCTION(Util, av_opt_set_double);
KRUV_AV_FUNCTION(Util, av_opt_set_int);
KRUV_AV_FUNCTION(Util, av_rescale_q);
KRUV_AV_FUNCTION(Util, av_sample_fmt_is_planar);
KRUV_AV_FUNCTION(Util, av_strerror);

KRUV_AV_FUNCTION(Codec, av_get_exact_bits_per_sample);
KRUV_AV_FUNCTION(Codec, av_packet_alloc);
KRUV_AV_FUNCTION(Codec, av_packet_free);
KRUV_AV_FUNCTION(Codec, av_packet_rescale_ts);
KRUV_AV_FUNCTION(Codec, av_packet_unref);
KRUV_AV_FUNCTION(Codec, avcodec_alloc_context3);
KRUV_AV_FUNCTION(Codec, avcodec_find_decoder);
KRUV_AV_FUNCTION(Codec, avcodec_find_encoder);
KRUV_AV_FUNCTION(Codec, avcodec_find_encoder_by_name);
KRUV_AV_FUNCTION(Codec, avcodec_free_context);
KRUV_AV_FUNCTION(Codec, avcodec_get_name);
KRUV_AV_FUNCTION(Codec, avcodec_open2);
KRUV_AV_FUNCTION(Codec, avcodec_parameters_from_context);
KRUV_AV_FUNCTION(Codec, avcodec_parameters_to_context);
KRUV_AV_FUNCTION(Codec, avcodec_receive_frame);
KRUV_AV_FUNCTION(Codec, avcodec_receive_packet);
KRUV_AV_FUNCTION(Codec, avcodec_send_frame);
KRUV_AV_FUNCTION(Codec, avcodec_send_packet);

KRUV_AV_FUNCTION(Format, av_find_input_format);
KRUV_AV_FUNCTION(Format, av_read_frame);
KRUV_AV_FUNCTION(Format, av_write_frame);
KRUV_AV_FUNCTION(Format, av_write_trailer);
KRUV_AV_FUNCTION(Format, avformat_alloc_context);
KRUV_AV_FUNCTION(Format, avformat_alloc_output_context2);
KRUV_AV_FUNCTION(Format, avformat_close_input);
KRUV_AV_FUNCTION(Format, avformat_find_stream_info);
KRUV_AV_FUNCTION(Format, avformat_free_context);
KRUV_AV_FUNCTION(Format, avformat_index_get_entries_count);
KRUV_AV_FUNCTION(Format, avformat_new_stream);
KRUV_AV_FUNCTION(Format, avformat_open_input);
KRUV_AV_FUNCTION(Format, avformat_write_header);
KRUV_AV_FUNCTION(Format, avio_alloc_context);
KRUV_AV_FUNCTION(Format, avio_context_free);
KRUV_AV_FUNCTION(Format, avio_flush);

KRUV_AV_FUNCTION(Resample, swr_alloc_set_opts2);
KRUV_AV_FUNCTION(Resample, swr_convert);
KRUV_AV_FUNCTION(Resample, swr_free);
KRUV_AV_FUNCTION(Resample, swr_get_delay);
KRUV_AV_FUNCTION(Resample, swr_get_out_samples);
KRUV_AV_FUNCTION(Resample, swr_init);

#undef KRUV_AV_FUNCTION
#pragma GCC diagnostic pop

} // namespace kruv
