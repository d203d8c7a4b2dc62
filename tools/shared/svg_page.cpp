#include "shared/svg_page.h"

#include <cmath>

namespace trevik_tools
{
namespace
{

// 1, 2 or 5 times a power of ten, such that about `count` steps fill the range.
double TickStep(double range, double count)
{
    const double raw = range / count;
    const double power = std::pow(10, std::floor(std::log10(raw)));
    const double lead = raw / power;
    return power * (lead <= 1 ? 1 : lead <= 2 ? 2 : lead <= 5 ? 5 : 10);
}

} // namespace

std::string PlainNumber(double value)
{
    return fmt::format("{:g}", value);
}

std::string GroupedNumber(double value)
{
    std::string text = std::fabs(value) < 1000 ? PlainNumber(value) : fmt::format("{:.0f}", value);
    const std::size_t digits = value < 0 ? 1 : 0; // where they begin
    for (std::size_t at = text.size(); std::fabs(value) >= 1000 && at > digits + 3;) {
        at -= 3;
        text.insert(at, ",");
    }
    return text;
}

std::string Escaped(const std::string &text)
{
    std::string escaped;
    for (const char c : text) {
        escaped += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : std::string(1, c);
    }
    return escaped;
}

void SvgPage::BeginPage(double width, double height, const char *style)
{
    Put("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1:.0f}\" width=\"{0}\" "
        "height=\"{1:.0f}\">\n{2}",
        width, height, style);
    Put("<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n");
}

std::string SvgPage::EndPage()
{
    Put("</svg>\n");
    return std::move(out_);
}

void SvgPage::DrawTicksAcross(const Scale &across, const Scale &up, bool values)
{
    const double step = TickStep(across.values.Size(), 9);
    const long last = std::lround(std::floor(across.values.high / step));
    for (long tick = std::lround(std::ceil(across.values.low / step)); tick <= last; ++tick) {
        const double value = static_cast<double>(tick) * step;
        const double at = across.At(value);
        Put("<path class=\"grid\" d=\"M{:.1f} {:.1f}V{:.1f}\"/>", at, up.low_at, up.high_at);
        if (values) {
            Put("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"middle\">{}</text>\n", at, up.low_at + 18,
                across.text(value));
        }
    }
}

void SvgPage::DrawTicksUp(const Scale &across, const Scale &up)
{
    const double step = TickStep(up.values.Size(), (up.low_at - up.high_at) / up.tick_distance);
    const long last = std::lround(std::floor(up.values.high / step));
    for (long tick = std::lround(std::ceil(up.values.low / step)); tick <= last; ++tick) {
        const double value = static_cast<double>(tick) * step;
        const double at = up.At(value);
        Put("<path class=\"grid\" d=\"M{0:.1f} {1:.1f}H{2:.1f}\"/>"
            "<text x=\"{3:.1f}\" y=\"{4:.1f}\" text-anchor=\"end\">{5}</text>\n",
            across.low_at, at, across.high_at, across.low_at - 7, at + 4.5, up.text(value));
    }
}

void SvgPage::DrawGrid(const Scale &across, const Scale &up, const std::string &across_label,
                       const std::string &up_label)
{
    DrawTicksAcross(across, up, !across_label.empty());
    DrawTicksUp(across, up);
    Put("<rect class=\"frame\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\"/>\n", across.low_at,
        up.high_at, across.high_at - across.low_at, up.low_at - up.high_at);
    const double middle = (up.low_at + up.high_at) / 2;
    Put("<text class=\"unit\" x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"middle\">{}</text>\n",
        (across.low_at + across.high_at) / 2, up.low_at + 40, across_label);
    Put("<text class=\"unit\" transform=\"translate(24 {:.1f}) rotate(-90)\" text-anchor=\"middle\">{}</text>\n",
        middle, up_label);
}

} // namespace trevik_tools
