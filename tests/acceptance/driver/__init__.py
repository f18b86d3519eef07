"""Drives Quarv from outside, as a person would: a private desktop, real X events, and what an
assistive tool sees. It knows nothing of the program's insides."""
