// SPDX-License-Identifier: Apache-2.0
    // Extends `crc`, a CRC-32 as in zip files, by one word, lowest byte first
    function [31:0] fingerprint_step;
        input [31:0] crc;
        input [31:0] data;
        integer i;
        begin
            fingerprint_step = ~crc ^ data;
            for (i = 0; i < 32; i = i + 1)
                fingerprint_step = {1'b0, fingerprint_step[31:1]}
                    ^ (fingerprint_step[0] ? 32'hedb8_8320 : 32'd0);
            fingerprint_step = ~fingerprint_step;
        end
    endfunction
