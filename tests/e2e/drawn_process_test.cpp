// What generating, gain, scaling, mirrors and reversals make of the bundled examples, point by
// point in the picture.

#include "tests/e2e/drawn_test.h"

#include <algorithm>
#include <cmath>

namespace {

using Drawn = DrawnTest;

const std::string harmonics_question =
    tag + "Generate artificial harmonics...\t " + "Enter: <number>, <type>, <order>, <amp.decay>\n";
const std::string replicate_question =
    tag + "Replicate selected partials...\t " + "Enter: <destination_time> (-1 = @end)\n\t";
const std::string arbitrary_question = tag + "\nGenerate arbitrary partials...\t " +
                                       "Enter: <freq_mult1> <freq_mult2> ...[c|r|q|e|b]\n\t";
const std::string gain_question =
    tag + "Process: Shift:\tGain\t " + "Quillgrove > Enter gain shift (dB):\n             ";
const std::string scale_question = tag + "Process: Scale...  " +
                                   "Arguments: time-stretch freq.exponent gain-compand\n" +
                                   "Arguments: ";
const std::string mirror_question =
    tag + "Process: Mirror...\t " + "Quillgrove > Enter mirror freq:\n             " +
    ">0 ->freq. mirror, <0 ->pitch mirror\n             " + " 0 ->cancel\n             ";
const std::string retro_question = tag + "Process: Retrogression \t " +
                                   "Retro: [@|*]\n\t@ = internal  retrogression\n\t" +
                                   "* = selected group reversal\n\t";

std::string numbered(const char *form, size_t a, size_t b = 0, size_t c = 0) {
    char text[100];
    std::snprintf(text, sizeof text, form, a, b, c);
    return text;
}

/// The points of the model's partials from this number on, and no others, are selected.
void select_from(std::vector<DrawnPartial> &model, size_t first) {
    for (size_t i = 0; i < model.size(); ++i) {
        for (DrawnPoint &point : model[i]) {
            point.selected = i >= first;
        }
    }
}

template <typename Change> void change_all(std::vector<DrawnPartial> &model, Change change) {
    for (DrawnPartial &partial : model) {
        std::for_each(partial.begin(), partial.end(), change);
    }
}

/// Copies one partial of the model to this multiple of its frequency.
void add_multiple(std::vector<DrawnPartial> &model, size_t source, double times) {
    DrawnPartial copy = model[source];
    for (DrawnPoint &point : copy) {
        point.freq *= times;
    }
    model.push_back(copy);
}

/// What making `copies` partials of the one candidate tells, at levels as they were.
std::string making_text(const std::vector<DrawnPartial> &model, size_t source, size_t copies) {
    const size_t old = model.size(), length = model[source].size();
    std::string text =
        "1 source candidates\n" + numbered("%zu new partials per candidate\n", copies);
    text += numbered("Old partials: %zu\tNew partials: %zu\n", old, copies);
    for (size_t i = 0; i < old + copies; ++i) {
        text += numbered("npoints[%zu] = %zu\n", i, i < old ? model[i].size() : length);
    }
    for (size_t m = old; m < old + copies; ++m) {
        text += numbered("m = %zu\tnpoints[%zu] = %zu\n", m, m, length);
    }
    text += numbered("OLD: %zu\tGENERATED: %zu\tNEW: %zu\n", old, copies, old + copies);
    for (size_t l = 0; l < copies; ++l) {
        text += numbered("m = %zu\nl = %zu\t r = %zu\tafac = 1.000000\n", old + l, l, copies);
    }
    return text;
}

std::string candidate_text(size_t source, size_t last) {
    return "1 source candidates\n" +
           numbered("Candidate [0]:\t ord_num =%zu\tfirst_point =0\tlast_point =%zu\n", source,
                    last);
}

} // namespace

TEST_F(Drawn, NewPartialsStandAtTheMultiplesAndTheirReplicaAtTheEnd) {
    open_example("tones.pt"); // ten harmonics of 110 Hz
    expect_model("tones-before");
    sweep_model(1.7, 1050.0, 3.05, 1120.0); // the uppermost, 1100 Hz from 1.8 s on
    ASSERT_EQ(model[9].size(), 121u);
    expect_model("tones-swept");
    const std::string factor = "AFAC = 1.000000\n";
    expect_dialogue("Edit/Generate/Harmonics...", "\n3 a 1 c\n",
                    harmonics_question + candidate_text(9, 120) + factor + factor + factor +
                        factor + "\n" + making_text(model, 9, 3));
    for (const double member : {2.0, 3.0, 4.0}) {
        add_multiple(model, 9, member);
    }
    select_from(model, 10);
    ASSERT_EQ(top(), 4400.0);
    expect_model("tones-harmonics");

    const double spacing = 0.01; // seconds from point to point
    expect_dialogue("Edit/Generate/Replicate...", "-1\n",
                    replicate_question + "sndlen = 3.000000\nPaste replica @: 3.010000 secs.\n" +
                        "3 source candidates\n");
    for (size_t m = 10; m < 13; ++m) {
        add_multiple(model, m, 1.0);
        for (DrawnPoint &point : model.back()) {
            point.time += 3.0 + spacing - 1.8;
        }
    }
    select_from(model, 13);
    expect_model("tones-replica");

    choose("Edit/Select/None");
    expect_said("Select: None     ");
    select_from(model, model.size());
    sweep_model(-0.05, 160.0, 3.02, 270.0); // 220 Hz
    expect_dialogue("Edit/Generate/Arbitrary...", "\n2.25 3.75\n",
                    arbitrary_question + "2.25 3.75\n\nlen = 4\ti = 4\n" +
                        "New partials per candidate: 2\n" + factor + factor + "\n" +
                        candidate_text(1, 280) + making_text(model, 1, 2));
    add_multiple(model, 1, 2.25);
    add_multiple(model, 1, 3.75);
    select_from(model, 16);
    expect_model("tones-arbitrary");
    expect_alive();
}

TEST_F(Drawn, GainShowsInTheContoursOfItsToneAlone) {
    open_example("tones.pt");
    sweep_model(1.7, 1050.0, 3.05, 1120.0);
    expect_model("tones-chosen");
    choose("View/Breakpoints");
    expect_said("View: Breakpoints\t ");
    double loudest_level = -1000.0;
    change_all(model, [&](const DrawnPoint &point) {
        loudest_level = std::max(loudest_level, point.level);
    });
    const auto expect_level = [&](size_t tone, size_t point, double shift) {
        const DrawnPoint &at = model[tone][point];
        const double level = at.level + shift - loudest_level;
        expect_colour(at.time / 3.0, at.freq / 1100.0, contour(level, level), 3);
    };
    expect_level(9, 60, 0.0);
    const Image before = picture;
    before.save(PICTURES_DIR "/tones-contours.ppm");
    expect_dialogue("Process/Shift/Gain...", "\n-24\n", gain_question);
    expect_level(9, 60, -24.0);
    picture.save(PICTURES_DIR "/tones-softer.ppm");
    expect_level(8, 80, 0.0);
    expect_level(0, 150, 0.0);
    expect_dialogue("Process/Shift/Gain...", "24\n", gain_question);
    expect_picture(before);
}

TEST_F(Drawn, ScaleSpreadsAVibratoAndDoublesAPhrase) {
    open_example("partials.pt");
    sweep_model(-0.1, 60.0, 5.1, 4200.0);
    expect_model("phrase-before");
    expect_dialogue("Process/Scale...", "\n1 3 1\n",
                    scale_question + "1.000000\t3.000000\t1.000000\n");
    for (DrawnPartial &partial : model) {
        double sum = 0.0;
        for (size_t j = 0; j + 1 < partial.size(); ++j) {
            sum += 1.0 / partial[j].freq;
        }
        const double mean = static_cast<double>(partial.size() - 1) / sum;
        for (DrawnPoint &point : partial) {
            point.freq = mean * std::pow(point.freq / mean, 3.0);
        }
    }
    expect_model("phrase-spread");

    look();
    const Image scene = picture.part(spot(0.01, 0.99), spot(0.99, 0.03));
    expect_dialogue("Process/Scale...", "2 1 1\n",
                    scale_question + "2.000000\t1.000000\t1.000000\n" +
                        "Reference time = 0.000000\n");
    change_all(model, [](DrawnPoint &point) { point.time *= 2.0; });
    ASSERT_EQ(end(), 10.0);
    expect_model("phrase-doubled"); // the same points on another scale
    EXPECT_TRUE(picture.part(spot(0.01, 0.99), spot(0.99, 0.03)) == scene);
    expect_alive();
}

TEST_F(Drawn, ScaleStretchesTheUppersOfTheBellAlone) {
    open_example("bell.pt");
    expect_model("bell-before");
    sweep_model(-0.1, 1900.0, 7.5, 2650.0); // two doublets, gone within a second
    expect_model("bell-swept");
    expect_dialogue("Process/Scale...", "\n8.5 1 1\n",
                    scale_question + "8.500000\t1.000000\t1.000000\n" +
                        "Reference time = 0.000000\n");
    change_all(model, [](DrawnPoint &point) { point.time *= point.selected ? 8.5 : 1.0; });
    ASSERT_GT(end(), 9.0);
    expect_model("bell-stretched");
    expect_dialogue("Process/Scale...", "0.1 0 1\n",
                    scale_question + "0.100000\t0.000000\t1.000000\n" +
                        "Reference time = 0.000000\n");
    change_all(model, [](DrawnPoint &point) { point.time *= point.selected ? 0.1 : 1.0; });
    for (size_t i = 20; i < 24; ++i) {
        double sum = 0.0;
        ASSERT_TRUE(model[i][0].selected) << i;
        for (size_t j = 0; j + 1 < model[i].size(); ++j) {
            sum += 1.0 / model[i][j].freq;
        }
        for (DrawnPoint &point : model[i]) {
            point.freq = static_cast<double>(model[i].size() - 1) / sum;
        }
    }
    expect_model("bell-flattened");
    expect_alive();
}

TEST_F(Drawn, MirrorsTurnTheGlissandiUpsideDown) {
    open_example("glissando.pt");
    expect_model("glissandi-before");
    select_everything();
    const double highest = top();
    double lowest = highest;
    change_all(model, [&](const DrawnPoint &point) { lowest = std::min(lowest, point.freq); });
    expect_dialogue("Process/Mirror...", "\n1500\n",
                    mirror_question + "Mirroring frequencies @1500.000000\n");
    const double above = (1500.0 - lowest) / (highest - 1500.0);
    change_all(model, [=](DrawnPoint &point) {
        point.freq = point.freq >= 1500.0 ? (highest - point.freq) * above + lowest
                                          : highest - (point.freq - lowest) / above;
    });
    expect_model("glissandi-mirrored");
    expect_dialogue("Process/Mirror...", "-1000\n",
                    mirror_question + "Mirroring pitch intervals @1000.000000\n");
    change_all(model, [](DrawnPoint &point) { point.freq = 1e6 / point.freq; });
    expect_model("glissandi-intervals");
    expect_alive();
}

TEST_F(Drawn, ReversalsTurnTheVowelBackward) {
    open_example("vowel.pt");
    select_everything();
    expect_model("vowel-before");
    const std::string last_exchange =
        numbered("i = %zu\tj = 0\tk = %zu\n", 39, (model[39].size() + 1) / 2 - 1);
    choose("Process/Retro...");
    program->send("\n*\n");
    expect_said_around(retro_question + "partials = 40\nMINT = 0.000000\t", last_exchange);
    double last = end();
    for (DrawnPartial &partial : model) {
        std::reverse(partial.begin(), partial.end());
        for (DrawnPoint &point : partial) {
            point.time = last - point.time;
        }
    }
    expect_model("vowel-reversed");
    choose("Process/Retro...");
    program->send("@\n");
    expect_said_around(retro_question + "partials = 40\ni = 0\tj = 0\tk = 0\n", last_exchange);
    for (DrawnPartial &partial : model) {
        for (size_t k = 0; k < partial.size() / 2; ++k) {
            std::swap(partial[k].freq, partial[partial.size() - 1 - k].freq);
        }
    }
    expect_model("vowel-inside");
    expect_alive();
}
