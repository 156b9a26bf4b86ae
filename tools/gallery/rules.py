"""Which rule of the dialect stands behind a message."""
import re

# The first row whose pattern is found counts.
RULES = [
    (r"X4014|X3570|gradient instruction",
     "Sampling an input takes the slope of the coordinate from the neighbouring pixels, so the "
     "compiler refuses it in a loop whose course differs from pixel to pixel."),
    (r"X3511|unable to unroll",
     "A loop that samples an input must have a length that is known when it is compiled."),
    (r"X3000.*struct|struct .*X3000",
     "A function cannot return a struct, and a local one needs a value: every translated function "
     "ends in a value made by its type's constructor, and a struct has none."),
    (r"not a valid constant expression",
     "The value of a constant at the top of the text must be made of numbers, operators and "
     "constructors alone."),
    (r"was not declared in this scope",
     "A macro's arguments may not hold a comma in parentheses of their own, and a macro is known "
     "from the line of its definition on, which must stand outside of functions."),
    (r"X3014.*bool|bool.*X3014", "A `bool` needs a value where it is declared."),
    (r"X3025|X3000|X3004",
     "A constant at the top of the text becomes a macro, whose name then stands for its value "
     "everywhere, and some names are words of HLSL."),
]


def rule_for(message):
    """A sentence for the message; empty where there is no message."""
    if not message:
        return ""
    for pattern, rule in RULES:
        if re.search(pattern, message, re.IGNORECASE):
            return rule
    return "The message tells what the front end or the HLSL compiler refuses."
