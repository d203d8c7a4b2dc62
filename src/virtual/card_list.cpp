#include "virtual/card_list.h"

namespace trevik::virtual_card
{
namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Reads from left to right, blanks aside; without a library, since drivers read lists, too.
class Reader
{
  public:
    explicit Reader(const char *text) : at_(text) {}

    bool at_end()
    {
        pass_blanks();
        return *at_ == '\0';
    }

    bool take(char wanted)
    {
        pass_blanks();
        const bool found = *at_ == wanted;
        at_ += found ? 1 : 0;
        return found;
    }

    // bus_slots: none that stands for a slot.
    unsigned take_number()
    {
        pass_blanks();
        if (!IsDigit(*at_))
            return bus_slots;
        unsigned number = 0;
        for (; IsDigit(*at_); ++at_)
            number = number < bus_slots ? 10 * number + static_cast<unsigned>(*at_ - '0') : bus_slots;
        return number < bus_slots ? number : bus_slots;
    }

    std::optional<Model> take_model()
    {
        if (!take('A'))
            return std::nullopt;
        if (*at_ != 'C')
            return Model::A;
        ++at_;
        return Model::AC;
    }

  private:
    void pass_blanks()
    {
        while (*at_ == ' ' || *at_ == '\t')
            ++at_;
    }

    const char *at_;
};

} // namespace

std::optional<CardList> ParseCards(const char *text)
{
    CardList cards{};
    Reader reader(text);
    if (reader.at_end())
        return cards;
    do {
        const unsigned number = reader.take_number();
        if (number == bus_slots || cards[number] || !reader.take(':'))
            return std::nullopt;
        const std::optional<Model> model = reader.take_model();
        if (!model)
            return std::nullopt;
        cards[number] = model;
    } while (reader.take(','));
    if (!reader.at_end())
        return std::nullopt;
    return cards;
}

} // namespace trevik::virtual_card
