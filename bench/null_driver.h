// A driver that accepts everything at once: cards 0 to 15, A models, whose status ports all read `status`.
#pragma once

#include "driver/registers.h"
#include "driver/request_buffer.h"

#include <trevik/TrevikHost.h>

#include <cstdint>
#include <cstring>

namespace trevik::bench
{

// What the null driver answers: status of every axis, and how many cards there are.
inline std::uint16_t null_status = MainStatus::idle_bit;
inline std::uint32_t null_cards = 1;

inline std::uint32_t NullControl(void *, std::uint32_t device, std::uint32_t code, const void *, std::uint32_t,
                                 void *out, std::uint32_t out_size, std::uint32_t *returned)
{
    *returned = out_size;
    switch (static_cast<ControlCode>(code)) {
    case ControlCode::IOCTL_PORT_READ:
        std::memcpy(static_cast<char *>(out) + 20, &null_status, sizeof null_status);
        break;
    case ControlCode::IOCTL_INDEX_READ:
        std::memcpy(static_cast<char *>(out) + 20, &model_word_A, sizeof model_word_A);
        break;
    case ControlCode::IOCTL_GET_RESOURCE:
        static_cast<char *>(out)[3] = static_cast<char>(device);
        break;
    default:
        break;
    }
    return 0;
}

inline constexpr const char *null_paths[] = {"0", "1", "2",  "3",  "4",  "5",  "6",  "7",
                                             "8", "9", "10", "11", "12", "13", "14", "15"};

inline constexpr TrevikHostDriver null_driver = {
    nullptr,
    [](void *) { return null_cards; },
    [](void *, std::uint32_t index) { return null_paths[index]; },
    [](void *, const char *path, std::uint32_t *device) {
        for (*device = 0; std::strcmp(null_paths[*device], path) != 0;)
            ++*device;
        return std::uint32_t{0};
    },
    NullControl,
    [](void *, std::uint32_t) {},
};

} // namespace trevik::bench
