"""The real program on real buses, in real panels and sessions. scripts/trial runs them, one subject each."""
