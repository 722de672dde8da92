// SPDX-License-Identifier: Apache-2.0
    localparam [39:0] PROTOCOL = {8'd5, 32'h3141_584f};  // version and magic, docs/jtag-protocol.md
