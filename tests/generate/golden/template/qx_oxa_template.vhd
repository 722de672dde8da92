-- The module oxa_analyzer of qx_oxa_template.v for VHDL: "use work.oxa_template.all;".
--
-- An instance to copy. Where it says "from", the configuration's name cannot be used here: replace
-- the text after => by that signal of your design.
--
--     u_oxa_analyzer : oxa_analyzer
--         port map (
--             count => count(9 downto 4),
--             u_count => u_count, -- from u/count
--             u_count_2 => u_count_2, -- from u/count[1:0]
--             u_count_12 => u_count_12, -- from u/Count[12]
--             soc_rev => soc_rev, -- from soc/rev[2:4]
--             line => line(0 to 1),
--             status(1) => full,
--             status(0) => irq(2),
--             unnamed => unnamed, -- from u/ready, u/valid
--             a_b_c_3 => a_b_c_3, -- from a.b/c[3]
--             a_b_c_3_2 => a_b_c_3_2, -- from a/b/c[3]
--             a_3_b => a_3_b, -- from a[3]/b
--             gaps(2) => Gaps(5),
--             gaps(1) => Gaps(3),
--             gaps(0) => Gaps(2),
--             reg_1 => reg_1, -- from reg[1]
--             sig_reg => sig_reg, -- from reg
--             sig_process => sig_process, -- from Process
--             sig_logic => sig_logic, -- from logic
--             until_0 => until_0, -- from until[0]
--             sig_7_seg => sig_7_seg, -- from 7/_seg__
--             zero_07 => zero_07, -- from zero[07]
--             zero_7 => zero(7),
--             u_far_999999999 => u_far_999999999, -- from u/far[999999999]
--             u_far_9999999999 => u_far_9999999999, -- from u/far[9999999999]
--             host_0 => host(0),
--             unnamed_2 => unnamed_2, -- from ??
--             tms_pad_i_2 => tms_pad_i_2, -- from tms/pad[i]
--             std_logic_2 => std_logic_2, -- from std/logic
--             x_1 => x_1, -- from x);//--"%1
--             u_count_2_2 => u_count_2_2, -- from u/count_2
--             soc_clk => soc_clk, -- from soc/clk
--             trigger1_o_2 => trigger1_o_2, -- from Trigger1/o
--             u_clk => u_clk, -- from u/CLK
--             u_clk_2 => u_clk_2, -- from u/clk
--             tms_pad_i => tms_pad_i,
--             tck_pad_i => tck_pad_i,
--             tdi_pad_i => tdi_pad_i,
--             tdo_pad_o => tdo_pad_o,
--             trigger1_o => trigger1_o
--         );

library ieee;
use ieee.std_logic_1164.all;

package oxa_template is
    component oxa_analyzer
        port (
            count : in  std_logic_vector(9 downto 4);
            u_count : in  std_logic;
            u_count_2 : in  std_logic_vector(1 downto 0);
            u_count_12 : in  std_logic;
            soc_rev : in  std_logic_vector(2 to 4);
            line : in  std_logic_vector(0 to 1);
            status : in  std_logic_vector(1 downto 0);
            unnamed : in  std_logic_vector(1 downto 0);
            a_b_c_3 : in  std_logic;
            a_b_c_3_2 : in  std_logic;
            a_3_b : in  std_logic;
            gaps : in  std_logic_vector(2 downto 0);
            reg_1 : in  std_logic;
            sig_reg : in  std_logic;
            sig_process : in  std_logic;
            sig_logic : in  std_logic;
            until_0 : in  std_logic;
            sig_7_seg : in  std_logic;
            zero_07 : in  std_logic;
            zero_7 : in  std_logic;
            u_far_999999999 : in  std_logic;
            u_far_9999999999 : in  std_logic;
            host_0 : in  std_logic;
            unnamed_2 : in  std_logic;
            tms_pad_i_2 : in  std_logic;
            std_logic_2 : in  std_logic;
            x_1 : in  std_logic;
            u_count_2_2 : in  std_logic;
            soc_clk : in  std_logic;
            trigger1_o_2 : in  std_logic;
            u_clk : in  std_logic;
            u_clk_2 : in  std_logic;
            tms_pad_i : in  std_logic;
            tck_pad_i : in  std_logic;
            tdi_pad_i : in  std_logic;
            tdo_pad_o : out std_logic;
            trigger1_o : out std_logic
        );
    end component;
end package;
