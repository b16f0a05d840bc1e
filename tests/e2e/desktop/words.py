"""Comparing what was said with what was understood."""

import re


def word_errors(said, understood):
    """The least number of words to change, drop or add to make one text of the other.

    Capitals and punctuation don't count.
    """
    said, understood = (re.findall(r"[a-z0-9']+", text.lower()) for text in (said, understood))
    distances = list(range(len(understood) + 1))
    for row, word in enumerate(said, 1):
        diagonal, distances[0] = distances[0], row
        for column, other in enumerate(understood, 1):
            diagonal, distances[column] = distances[column], min(
                distances[column] + 1, distances[column - 1] + 1, diagonal + (word != other))
    return distances[-1]
