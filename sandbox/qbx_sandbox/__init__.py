"""A loopback SMS gateway and mail server that deliver to nobody and show what they received."""
