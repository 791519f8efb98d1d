"""The generator of Larkmoor's plain code: dictionary (TOML) in, C++ out."""
