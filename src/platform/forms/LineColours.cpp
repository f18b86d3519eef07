#include "platform/forms/LineColours.h"

#include <algorithm>
#include <cmath>

namespace quarv::forms {

namespace {

// Contrast and luminance as "Web Content Accessibility Guidelines 2.1", "Contrast (Minimum)" has
// them.
constexpr double LeastContrast = 4.5;

struct Tone {
    float hue;  // 0 to 1
    float saturation;
};

constexpr std::array<Tone, LineKinds> Tones{{
    {0, 0},          // Plain
    {0.61F, 0.85F},  // Keyword: blue
    {0.02F, 0.75F},  // String: red
    {0.34F, 0.60F},  // Comment: green
    {0.80F, 0.55F},  // Number: purple
}};

double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

// From a middling lightness on towards black or white, whichever differs more from the background:
// the first that can be read. One of the two always can.
QColor Readable(const Tone& tone, double background) {
    constexpr float Step = 0.02F;
    const bool darker = Contrast(0, background) > Contrast(1, background);
    float lightness = darker ? 0.42F : 0.68F;
    while (lightness > 0 && lightness < 1) {
        // By its bytes, as it is painted.
        const QColor colour(QColor::fromHslF(tone.hue, tone.saturation, lightness).rgb());
        if (Contrast(Luminance(colour), background) >= LeastContrast) return colour;
        lightness += darker ? -Step : Step;
    }
    return darker ? Qt::black : Qt::white;
}

}  // namespace

LineColours LineColoursOn(const QColor& background) {
    const double luminance = Luminance(background);
    LineColours colours;
    for (int kind = 1; kind < LineKinds; ++kind) {
        const auto at = static_cast<size_t>(kind);
        colours.ofKind[at] = Readable(Tones[at], luminance);
    }
    return colours;
}

}  // namespace quarv::forms
