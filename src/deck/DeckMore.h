#pragma once

#include "deck/FrameMailbox.h"

/// What a deck has beside the fields of its class, whose size stays as it is.
struct DeckMore
{
    explicit DeckMore(CPaneDeck* pDeck) : mailbox(pDeck) {}

    FrameMailbox mailbox;
};
