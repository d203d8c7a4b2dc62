// Contours for tests, different for every seed.
#pragma once

#include <cmath>
#include <random>
#include <string>

// Arcs and lines that meet at tangents, in three decimals as CAM programs write them. `rise`: mm by which Z changes at
// most along an arc.
inline std::string RandomArcs(unsigned seed, int count, double rise = 0)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0, 1);
    const auto rounded = [](double value) { return std::round(value * 1000) / 1000; };
    const auto word = [](char letter, double value) { return letter + std::to_string(value) + " "; };
    std::string text = "G1 F1500\n";
    double x = 0;
    double y = 0;
    double heading = 0;
    for (int i = 0; i < count; ++i) {
        const double size = std::pow(10, 2 * unit(random) - 1); // 0.1 to 10 mm
        if (unit(random) < 0.3) {
            x = rounded(x + size * std::cos(heading));
            y = rounded(y + size * std::sin(heading));
            text += "G1 " + word('X', x) + word('Y', y) + "\n";
            continue;
        }
        const double way = unit(random) < 0.5 ? 1 : -1;
        const double turn = way * (0.05 + 3 * unit(random));
        const double center_x = x - way * size * std::sin(heading);
        const double center_y = y + way * size * std::cos(heading);
        text += (way > 0 ? "G3 " : "G2 ") + word('I', rounded(center_x - x)) + word('J', rounded(center_y - y));
        x = rounded(center_x + way * size * std::sin(heading + turn));
        y = rounded(center_y - way * size * std::cos(heading + turn));
        heading += turn;
        text += word('X', x) + word('Y', y);
        text += rise > 0 ? word('Z', rounded(rise * unit(random))) : "";
        text += "\n";
    }
    return text + "G0 X0 Y0\n";
}
